// SPDX-License-Identifier: Apache-2.0
#include "platform/records/ContactSummary.h"

#include <QDBusMetaType>

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
