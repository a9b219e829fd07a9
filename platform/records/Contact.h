// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/ContactSummary.h"

#include <QDateTime>
#include <QMap>

#include <array>

/// A contact. A contact by default has every text empty, no misc pair, both flags false, type 0 and a null date.
/// On the bus: (ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i)), the 26 texts of `texts` first.
/// A text cannot hold a NUL on the bus; a text that does ends there.
struct Contact : ContactSummary
{
    QString loginName;
    QString salutation;
    QString latinFirstName; ///< form in which first names are matched and ordered, made by the directory
    QString latinName;      ///< the same of the last name
    QString language;
    QString timezone;
    QString officePhoneCan; ///< canonical form of officePhone; so for every field ending in Can
    QString attendant;
    QString colleague;
    QString assistant;
    QString fax;
    QString faxCan;
    QString voicemail;
    QString personalHome;
    QString personalHomeCan;
    QString personalMobile;
    QString personalMobileCan;
    QString personalFax;
    QString personalFaxCan;
    QString personalEmail;
    QString collaborationId; ///< instant-messaging address
    QMap<QString, QString> misc;
    bool isPreviewed = false;
    bool isPrivate = false;
    QString photo; ///< file path or web address
    QString melody;

    /// Persistent id that synchronisation with a PC uses.
    QString getPUID() const { return puid; }
    void setPUID(const QString &value) { puid = value; }

    /// Null for a contact that was never stored.
    QDateTime getLastModificationDate() const { return lastModificationDate; }
    void setLastModificationDate(const QDateTime &value) { lastModificationDate = value; }

    /// Whether this is a caller who withheld the number: such a contact is never kept. Of the home number the canonical
    /// form tells.
    bool isAnonymous() const;

    bool operator==(const Contact &) const = default;

    /// A text field and the name it has on the bus and in the database.
    struct TextField
    {
        const char *name;
        QString Contact::*value;
    };
    static constexpr int textCount = 26;
    /// The 26 texts in their order on the bus.
    static const std::array<TextField, textCount> texts;

private:
    QString puid;
    QDateTime lastModificationDate;
};

Q_DECLARE_TYPEINFO(Contact, Q_RELOCATABLE_TYPE);
using ListContact = QList<Contact>;

QDBusArgument &operator<<(QDBusArgument &argument, const Contact &contact);
const QDBusArgument &operator>>(const QDBusArgument &argument, Contact &contact);

/// Registers "Contact" and "ListContact" with the meta-type system and the bus.
void registerDBusContact();

Q_DECLARE_METATYPE(Contact)
