// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"

#include <QString>
#include <QVariantList>

#include <optional>

/// The calls into other modules that every part of a module makes, settings above all. No error leaves them: a failure
/// is logged once and is answered with nothing, an empty text or false. Nothing is cached, each read asks anew. The
/// synchronous calls wait 5 s at most.
class PlatformCalls
{
public:
    explicit PlatformCalls(RemoteCaller &caller)
        : m_caller(caller)
    {
    }

    /// Nothing when the setting cannot be read.
    std::optional<QString> getStringSetting(const QString &key);
    /// Base 10; 0 for a text that is no number. Nothing when the setting cannot be read.
    std::optional<int> getIntSetting(const QString &key);
    /// Empty when the setting cannot be read. The log then has a warning, no error.
    QString getSetting(const QString &key);

    /// These two do not wait. They never learn of a refusal.
    void setStringSetting(const QString &key, const QString &value);
    void setIntSetting(const QString &key, int value);
    /// Waits; true when the settings manager answered without an error.
    bool setSettingConfirmed(const QString &key, const QString &value);

    /// Calls without asking for an answer, and does not wait.
    void callModule(const QString &module, const QString &method, const QVariantList &arguments);

private:
    RemoteCaller &m_caller;
};
