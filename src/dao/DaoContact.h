// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"
#include "src/dao/ContactStatements.h"
#include "src/dao/DaoMisc.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <functional>
#include <optional>

class Connection;

/// Reads and writes contacts: the one class that runs statements on the CONTACT table. On the thread of its connection,
/// which must outlive it; the tables must exist when it is made.
///
/// Nothing throws. A statement that fails is logged ("Error while executing query %1 : %2") and answered with -1 by
/// writes, 0 by counts, an empty text or list by reads. Every read of whole contacts fills their misc pairs. Writes
/// are grouped by a Transaction on the connection.
class DaoContact
{
public:
    explicit DaoContact(Connection &connection);

    Connection &connection() { return m_connection; }
    DaoMisc &misc() { return m_misc; }

    // Writes.

    /// Stores a new contact; its id and modification date are filled in. A local or manager/assistant contact and one
    /// of device management get the directory's own (ContactIds), any other keeps the one it has. The persistent id is
    /// stored only `withPuid`, and else emptied. The misc pairs are not written.
    int insertContact(Contact &contact, bool withPuid);
    /// Replaces all but the persistent id. A contact that differs from the stored one gets the current date, which is
    /// filled in, and with that loses its stored misc pairs; the caller writes them again (DaoMisc::replacePairs).
    int updateContact(Contact &contact);
    /// Replaces all, the persistent id and the modification date being the record's. Misc pairs as above.
    int updateContactFromImport(const Contact &contact);
    int deleteContact(const QString &contactId);
    /// Only what is a cached copy, where another contact has the same id; its misc pairs stay.
    int deleteCachedContact(const QString &contactId);
    /// Gives the contact stored under the id 'newContact' its own.
    int updateIdContact(const QString &newId);
    int updatePuidContact(const QString &contactId, const QString &puid);
    int updatePhotoContact(const QString &contactId, const QString &photo);
    int updateContactPreview(const QString &contactId, bool isPreviewed);
    /// All of them in one statement; ids that nobody has are no failure, an empty list is one.
    int updateContactsPreview(const QStringList &contactIds, bool isPreviewed);

    // Counts.

    int nbContact();
    int nbDMContacts();
    int nbLocalUserContacts();
    int _nbCachedContactQuery();
    int _nbContactsUsingThisPhotoQuery(const QString &photo);

    // Reads by fixed statements.

    /// The cached contact with the earliest modification date; empty when there is none.
    QString getOldestCachedContactId();
    /// None or one.
    ListContact getContact(const QString &contactId);
    /// By id. `length` -1 means to the end, a negative `start` the beginning.
    ListContact getAllContact();
    ListContact getAllContact(int start, int length);
    ListContact getAllContactInPreview(int start, int length);
    ListContact getContactByType(int type);
    /// These two whatever the letter case, and no cached contacts.
    ListContact getContactsByEmailAddress(const QString &emailAddress);
    ListContact getContactByIMAddress(const QString &imAddress);
    /// The number in canonical form, compared with the five canonical numbers. An empty one matches nobody.
    ListContact getContactByPhoneNumber(const QString &number);
    /// Ids of the cached contacts whose office number is one of the five canonical numbers of this contact.
    QStringList _getCachedContactsWithMatchingOfficePhone(const Contact &contact);

    /// The paths and addresses of all photos; nothing when they could not be read to the end, so that nobody takes a
    /// photo for unused because of that.
    std::optional<QSet<QString>> getPhotos();
    /// By id: contacts with a photo that is neither an address nor ends with this suffix, but for those of device
    /// management.
    ListContact getContactsWithUnresizedPhoto(const QString &suffix);

    // For synchronisation; local contacts only.

    /// The persistent ids by contact id.
    QHash<QString, QString> getLocalPuids();
    /// What an export takes of a contact. The misc pairs are filled, of the other fields those that it writes.
    using TakeContact = std::function<void(const Contact &contact)>;
    void fullExport(const TakeContact &take);
    /// The two ids of each, in a record that is otherwise empty.
    void mappingExport(const TakeContact &take);
    /// Whether no contact has changed since `previousExportDate`, which must not be earlier than the last local change.
    bool isDirectorySynchronized(const QDateTime &previousExportDate, const QDateTime &lastLocalChangeDate);

    // Reads by statements put together at run time.

    struct StrictMatch
    {
        qint64 rowId = 0;
        QString name;
        QString firstName;
        QString collaborationId;
        QString language;
        QString photo;
    };
    /// Exactly this first and last name.
    QList<StrictMatch> findContactByNameStrict(const QString &firstName, const QString &lastName);
    /// Contacts with the text anywhere in one of their fields (QueryText::allFieldsCondition).
    ListContact getAllFieldsSearch(const QString &text);
    /// Prefix of the last name as stored (QueryText::namePattern).
    ListContact getContactsByName(const QString &name);
    /// Prefix of its latin form. Of each contact only what its summary holds: one letter can hit thousands, of which
    /// hardly one is ever asked for whole.
    ListContact getContactsByLatinName(const QString &name);
    ListContact getContactsWithNoLatinName();
    /// Contacts with this instant-messaging address, this canonical office number or this canonical extension; exact,
    /// an empty one is not compared. Cached contacts are among them.
    ListContact getContactToMerge(const QString &imAddress, const QString &phoneNumber, const QString &extentionPhone);
    ListContact getContactsById(const QStringList &contactIds);

private:
    static bool isUpdateLastModificationDateNeeded(const ListContact &stored, const Contact &contact);
    static std::optional<int> countOf(Statement &statement);
    void adjustCount(int difference);
    ListContact readContacts(Statement::Use &use);
    ListContact selectContacts(const QString &text);
    static ListContact readSummaries(Statement::Use &use);

    Connection &m_connection;
    /// Rows of CONTACT, counted once and kept: a count reads them all, and each creation asks for it.
    std::optional<int> m_count;
    quint64 m_countEpoch = 0;
    ContactStatements m_statements;
    DaoMisc m_misc;
};
