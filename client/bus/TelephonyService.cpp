// SPDX-License-Identifier: Apache-2.0
#include "client/bus/TelephonyService.h"

#include "platform/records/KestinBus.h"

#include <QStringList>

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
