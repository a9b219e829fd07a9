// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Setting.h"

#include <QList>
#include <QString>

#include <optional>

/// A setting that the platform knows.
struct KnownSetting
{
    Setting record;       ///< all but the value
    QString owner;        ///< module that is told of a change; empty: nobody
    QString changeMethod; ///< its bus method for this, which takes the Setting
};

/// Every setting that the platform knows, with its default, its limits, its texts for a settings page and its owner.
class SettingsCatalogue
{
public:
    SettingsCatalogue();

    const QList<KnownSetting> &all() const { return m_settings; }
    /// Null for a key that is not in the catalogue.
    const KnownSetting *find(const QString &key) const;

    /// Why this text cannot be the setting's value, when it cannot. A setting whose maximum is above its minimum is
    /// an integer within them; one with choices takes these only; any other takes every text.
    static std::optional<QString> refusal(const Setting &setting, const QString &value);

private:
    QList<KnownSetting> m_settings;
};
