// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>

/// Kinds of contact, the values of ContactSummary::type.
namespace ContactType {
constexpr qint32 Local = 0;            ///< made by the user
constexpr qint32 Remote = 1;           ///< of the company directory
constexpr qint32 DeviceManagement = 3; ///< pushed by device management
constexpr qint32 Other = 4;            ///< another kind of the platform, which is not local
constexpr qint32 ManagerAssistant = 5; ///< manager or assistant, never taken out of the preview list
constexpr qint32 Cached = 6;           ///< remote contact kept locally
} // namespace ContactType

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

    /// "First Last". A contact without names is called by its address, a number or its id, in this order.
    QString displayName() const;
    /// Whether the contact is of the company directory, found by a search and not kept on the phone.
    bool isOfCompany() const;

    bool operator==(const ContactSummary &) const = default;
};

using ListContactSummary = QList<ContactSummary>;

QDBusArgument &operator<<(QDBusArgument &argument, const ContactSummary &summary);
const QDBusArgument &operator>>(const QDBusArgument &argument, ContactSummary &summary);

/// Registers ContactSummary and "ListContactSummary" with the meta-type system and the bus.
void registerDBusContactSummary();

Q_DECLARE_METATYPE(ContactSummary)
