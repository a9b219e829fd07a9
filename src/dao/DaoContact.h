// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"
#include "src/dao/ContactStatements.h"
#include "src/dao/ContactWalk.h"
#include "src/dao/DaoMisc.h"
#include "src/dao/PageStarts.h"

#include <QSet>
#include <QStringList>

#include <optional>
#include <tuple>

class Connection;

/// Reads and writes contacts: the one class that runs statements on the CONTACT table. On the thread of its connection,
/// which must outlive it; the tables must exist when it is made.
///
/// Nothing throws. A statement that fails, or a row of it that cannot be read, is logged ("Error while executing query
/// %1 : %2") and answered with false by writes, with nothing by counts and reads: what was read until then is not all,
/// and whoever decides by it must change nothing. Every read of whole contacts fills their misc pairs. Writes are
/// grouped by a Transaction on the connection.
class DaoContact
{
public:
    explicit DaoContact(Connection &connection);

    Connection &connection() { return m_connection; }
    DaoMisc &misc() { return m_misc; }

    /// Waits until nobody else writes, 5 s at most, and lets nobody until the transaction that is going on has ended.
    /// To come before its first read, for who has read does not wait: each write fails while another writes. False when
    /// it fails (logged).
    [[nodiscard]] bool lockForWriting();

    // Writes.

    /// Stores a new contact; its id and modification date are filled in. A local contact, a manager/assistant contact
    /// and a contact of device management get an id of the directory (ContactIds). Any other contact keeps its id. The
    /// persistent id is stored only `withPuid`, and else emptied. The misc pairs are not written.
    [[nodiscard]] bool insertContact(Contact &contact, bool withPuid);
    /// Replaces all but the persistent id. A contact that differs from the stored contact gets the current date, which
    /// is filled in, and with that loses its stored misc pairs; the caller writes them again (DaoMisc::replacePairs).
    [[nodiscard]] bool updateContact(Contact &contact);
    /// Replaces all, the persistent id and the modification date being the record's. Misc pairs as above.
    [[nodiscard]] bool updateContactFromImport(const Contact &contact);
    /// Gives their latin names to all contacts that have no latin last name (getContactsWithNoLatinName) and could
    /// have, or whose latin first name is not that of their first name. Nothing else of them changes, for what is made
    /// of a name is no change of the contact.
    [[nodiscard]] bool fillMissingLatinNames();
    [[nodiscard]] bool deleteContact(const QString &contactId);
    /// Only what is a cached copy, where another contact has the same id; its misc pairs stay.
    [[nodiscard]] bool deleteCachedContact(const QString &contactId);
    /// Gives the contact stored under the id 'newContact' its own.
    [[nodiscard]] bool updateIdContact(const QString &newId);
    [[nodiscard]] bool updatePuidContact(const QString &contactId, const QString &puid);
    [[nodiscard]] bool updatePhotoContact(const QString &contactId, const QString &photo);
    [[nodiscard]] bool updateContactPreview(const QString &contactId, bool isPreviewed);
    /// All of them in one statement; ids that nobody has are no failure, an empty list is a failure.
    [[nodiscard]] bool updateContactsPreview(const QStringList &contactIds, bool isPreviewed);

    // Counts.

    std::optional<int> nbContact();
    std::optional<int> nbDMContacts();
    std::optional<int> nbLocalUserContacts();
    std::optional<int> _nbCachedContactQuery();
    std::optional<int> _nbContactsUsingThisPhotoQuery(const QString &photo);

    // Reads by fixed statements.

    /// The cached contact with the earliest modification date; empty when there is none.
    std::optional<QString> getOldestCachedContactId();
    /// A list of at most one contact.
    std::optional<ListContact> getContact(const QString &contactId);
    /// Of the same contact; nothing when there is none, too.
    std::optional<int> typeOf(const QString &contactId);
    /// By id. `length` -1 means to the end, a negative `start` the beginning.
    std::optional<ListContact> getAllContact();
    std::optional<ListContact> getAllContact(int start, int length);
    std::optional<ListContact> getAllContactInPreview(int start, int length);
    std::optional<ListContact> getContactByType(int type);
    /// These two whatever the letter case, and no cached contacts.
    std::optional<ListContact> getContactsByEmailAddress(const QString &emailAddress);
    std::optional<ListContact> getContactByIMAddress(const QString &imAddress);
    /// The number in canonical form, compared with the five canonical numbers. An empty number matches nobody.
    std::optional<ListContact> getContactByPhoneNumber(const QString &number);
    /// Ids of the cached contacts whose office number is one of the five canonical numbers of this contact.
    std::optional<QStringList> _getCachedContactsWithMatchingOfficePhone(const Contact &contact);

    /// The paths and addresses of all photos.
    std::optional<QSet<QString>> getPhotos();
    /// By id: contacts with a photo that is neither an address nor ends with this suffix, but for those of device
    /// management.
    std::optional<ListContact> getContactsWithUnresizedPhoto(const QString &suffix);

    // For synchronisation; local contacts only.

    /// What an export takes of a contact. The misc pairs are filled, of the other fields those that it writes.
    ContactWalk fullExport();
    /// The two ids of each, in a record that is otherwise empty.
    ContactWalk mappingExport();
    ContactWalk getLocalPuids();
    /// Whether no contact has changed since `previousExportDate`, which must not be earlier than the last local change.
    /// No when that could not be read.
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
    std::optional<QList<StrictMatch>> findContactByNameStrict(const QString &firstName, const QString &lastName);
    /// Contacts with the text anywhere in one of their fields (QueryText::allFieldsCondition).
    std::optional<ListContact> getAllFieldsSearch(const QString &text);
    /// Prefix of the last name as stored (QueryText::namePattern).
    std::optional<ListContact> getContactsByName(const QString &name);
    /// Prefix of its latin form. Of each contact only what its summary holds: one letter can hit thousands of contacts,
    /// and hardly any is ever asked for whole.
    std::optional<ListContact> getContactsByLatinName(const QString &name);
    /// Does ahead what the first search by latin name does once: reads the schema and prepares the statement.
    void prepareNameSearch();
    /// Contacts without a latin form of the last name, among them those without a last name. Of each only id and names.
    std::optional<ListContact> getContactsWithNoLatinName();
    /// Contacts with this instant-messaging address, this canonical office number or this canonical extension; exact.
    /// An empty text is not compared. Cached contacts are among them.
    std::optional<ListContact> getContactToMerge(const QString &imAddress, const QString &phoneNumber,
                                                 const QString &extentionPhone);
    std::optional<ListContact> getContactsById(const QStringList &contactIds);

private:
    static bool isUpdateLastModificationDateNeeded(const ListContact &stored, const Contact &contact);
    static std::optional<int> readNumber(Statement::Use &use);
    static std::optional<int> countOf(Statement &statement);
    void adjustCount(int difference);
    std::optional<ListContact> readContacts(Statement::Use &use);
    std::optional<ListContact> selectContacts(const QString &text);
    template <typename Read>
    static std::optional<ListContact> readRows(Statement::Use &use, Read read)
    {
        ListContact contacts;
        if (!use.eachRow([&](const Statement::Use &row) { contacts.append(read(row)); }))
            return std::nullopt;
        return contacts;
    }

    /// The known starts of pages that are good for the store as it is now.
    PageStarts &pageStarts();

    Connection &m_connection;
    /// Rows of CONTACT, counted once and kept: a count reads them all, and each creation asks for it.
    std::optional<int> m_count;
    quint64 m_countEpoch = 0;
    PageStarts m_pageStarts;
    std::tuple<quint64, int, int> m_pageStartsVersion; ///< epoch, changes by this connection, and by others
    ContactStatements m_statements;
    DaoMisc m_misc;
};
