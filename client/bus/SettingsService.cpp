// SPDX-License-Identifier: Apache-2.0
#include "client/bus/SettingsService.h"

namespace {
constexpr QLatin1String module("SettingsManager");
}

QString SettingsService::value(const QString &key) const
{
    return m_bus.call<QString>(module, QStringLiteral("getSettingValue"), {key});
}

UpdateReport SettingsService::setValue(const QString &key, const QString &value) const
{
    return m_bus.call<UpdateReport>(module, QStringLiteral("setSettingValue"), {key, value});
}

ListSetting SettingsService::all() const
{
    return m_bus.call<ListSetting>(module, QStringLiteral("getSettings"), {});
}
