// SPDX-License-Identifier: Apache-2.0
#include "client/bus/SettingsService.h"

#include "platform/records/KestinBus.h"

QString SettingsService::value(const QString &key) const
{
    return m_bus.call<QString>(ModuleName::settings, QStringLiteral("getSettingValue"), {key});
}

UpdateReport SettingsService::setValue(const QString &key, const QString &value) const
{
    return m_bus.call<UpdateReport>(ModuleName::settings, QStringLiteral("setSettingValue"), {key, value});
}

ListSetting SettingsService::all() const
{
    return m_bus.call<ListSetting>(ModuleName::settings, QStringLiteral("getSettings"), {});
}
