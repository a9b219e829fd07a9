// SPDX-License-Identifier: Apache-2.0
#include "platform/records/ContactSummary.h"

#include "platform/records/ContactIds.h"

#include <QDBusMetaType>

QString ContactSummary::displayName() const
{
    const QString fullName = (firstName + QLatin1Char(' ') + name).trimmed();
    for (const QString &candidate : {fullName, email, officePhone}) {
        if (!candidate.isEmpty())
            return candidate;
    }
    return contactId;
}

bool ContactSummary::isOfCompany() const
{
    return type == ContactType::Remote || ContactIds::isRemote(contactId);
}

QDBusArgument &operator<<(QDBusArgument &argument, const ContactSummary &summary)
{
    argument.beginStructure();
    argument << summary.contactId << summary.firstName << summary.name << summary.officePhone << summary.email
             << summary.type;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ContactSummary &summary)
{
    argument.beginStructure();
    argument >> summary.contactId >> summary.firstName >> summary.name >> summary.officePhone >> summary.email >>
        summary.type;
    argument.endStructure();
    return argument;
}

void registerDBusContactSummary()
{
    qDBusRegisterMetaType<ContactSummary>();
    qDBusRegisterMetaType<ListContactSummary>();
    qRegisterMetaType<ListContactSummary>("ListContactSummary");
}
