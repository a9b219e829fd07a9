// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Setting.h"
#include "platform/records/UpdateReport.h"

#include <QDBusAbstractAdaptor>

class SettingsManager;

/// The bus methods of the module "SettingsManager".
class SettingsAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.norlan.Kestin.KestinInterface")

public:
    /// A child of the module.
    explicit SettingsAdaptor(SettingsManager &module);

public Q_SLOTS:
    QString getSettingValue(const QString &key);
    UpdateReport setSettingValue(const QString &key, const QString &value);
    Setting getSetting(const QString &key);
    ListSetting getSettings();

private:
    SettingsManager &m_settings;
};
