// SPDX-License-Identifier: Apache-2.0
#include "peers/settings/SettingsAdaptor.h"

#include "peers/settings/SettingsManager.h"

SettingsAdaptor::SettingsAdaptor(SettingsManager &module)
    : QDBusAbstractAdaptor(&module)
    , m_settings(module)
{
}

QString SettingsAdaptor::getSettingValue(const QString &key)
{
    return m_settings.getSettingValue(key);
}

UpdateReport SettingsAdaptor::setSettingValue(const QString &key, const QString &value)
{
    return m_settings.setSettingValue(key, value);
}

Setting SettingsAdaptor::getSetting(const QString &key)
{
    return m_settings.getSetting(key);
}

ListSetting SettingsAdaptor::getSettings()
{
    return m_settings.getSettings();
}

#include "moc_SettingsAdaptor.cpp"
