// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>

/// The short form of a contact: what a list on the screen shows. Also the base part of Contact, so a summary is made
/// from a contact by copying that part.
/// On the bus: (sssssi), the fields in the order in which they stand here.
struct ContactSummary
{
    QString contactId;
    QString firstName;
    QString name;
    QString officePhone;
    QString email;
    qint32 type = 0; ///< ContactType

    bool operator==(const ContactSummary &) const = default;
};

using ListContactSummary = QList<ContactSummary>;

QDBusArgument &operator<<(QDBusArgument &argument, const ContactSummary &summary);
const QDBusArgument &operator>>(const QDBusArgument &argument, ContactSummary &summary);

/// Registers ContactSummary and "ListContactSummary" with the meta-type system and the bus.
void registerDBusContactSummary();

Q_DECLARE_METATYPE(ContactSummary)
