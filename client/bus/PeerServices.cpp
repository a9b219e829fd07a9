// SPDX-License-Identifier: Apache-2.0
#include "client/bus/PeerServices.h"

#include "platform/records/KestinBus.h"

#include <QStringList>

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

QString TelephonyService::canonicalNumber(const QString &number) const
{
    // Telephony takes and answers the five numbers of a contact.
    constexpr qsizetype numbersOfContact = 5;
    QStringList numbers(numbersOfContact);
    numbers.first() = number;
    try {
        const auto canonical = m_bus.call<QStringList>(
            ModuleName::telephony, QStringLiteral("makeCanonicalNumberListWithoutPrefix"), {numbers});
        return canonical.size() >= numbersOfContact ? canonical.first() : number;
    } catch (const CommandFailure &) {
        return number;
    }
}
