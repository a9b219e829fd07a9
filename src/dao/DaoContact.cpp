// SPDX-License-Identifier: Apache-2.0
#include "src/dao/DaoContact.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"
#include "platform/records/ContactIds.h"
#include "src/dao/Connection.h"
#include "src/dao/ContactRow.h"
#include "src/dao/LatinFunction.h"
#include "src/dao/QueryText.h"

#include <algorithm>

namespace {

/// Whether a change from one to the other is one that the user made to the contact, so that it counts as modified.
bool isSameContent(const Contact &stored, const Contact &wanted)
{
    const auto isSameText = [&](const Contact::TextField &field) { return stored.*field.value == wanted.*field.value; };
    return std::all_of(Contact::texts.cbegin(), Contact::texts.cend(), isSameText) && stored.photo == wanted.photo &&
           stored.melody == wanted.melody && stored.isPrivate == wanted.isPrivate && stored.misc == wanted.misc;
}

} // namespace

DaoContact::DaoContact(Connection &connection)
    : m_connection(connection)
    , m_statements(connection)
    , m_misc(connection)
{
}

bool DaoContact::insertContact(Contact &contact, bool withPuid)
{
    KestinLogger::debug("DaoContact::insertContact : idcontact:%1", contact.contactId);
    KestinLogger::debug("DaoContact::insertContact : name:%1", contact.name);
    KestinLogger::debug("DaoContact::insertContact : latinName:%1", contact.latinName);
    KestinLogger::debug("DaoContact::insertContact : firstName:%1", contact.firstName);
    KestinLogger::debug("DaoContact::insertContact : latinFirstName:%1", contact.latinFirstName);
    if (contact.type == ContactType::DeviceManagement)
        contact.contactId = ContactIds::ofDeviceManagement(contact.contactId);
    contact.setLastModificationDate(QDateTime::currentDateTimeUtc());
    if (!withPuid)
        contact.setPUID({});
    Statement::Use use = m_statements.insert.use();
    ContactRow::bindInsert(use, contact);
    if (!withPuid)
        use.bindNull(":puid");
    if (!use.execute())
        return false;
    adjustCount(1);
    // The id that the database's trigger has just given to the row.
    if (contact.type == ContactType::Local || contact.type == ContactType::ManagerAssistant)
        contact.contactId = ContactIds::ofRow(use.lastInsertId());
    return true;
}

bool DaoContact::updateContact(Contact &contact)
{
    KestinLogger::debug("DaoContact::updateContact : idContact:%1", contact.contactId);
    const std::optional<ListContact> stored = getContact(contact.contactId);
    if (!stored)
        return false;
    const bool isChanged = isUpdateLastModificationDateNeeded(*stored, contact);
    if (isChanged)
        contact.setLastModificationDate(QDateTime::currentDateTimeUtc());
    Statement::Use use = m_statements.update.use();
    ContactRow::bindUpdate(use, contact);
    if (!use.bind(contact.contactId).execute())
        return false;
    // Setting the date, be it to the same one, has taken the pairs away. Those of a changed contact are the caller's.
    return isChanged || stored->isEmpty() || m_misc.replacePairs(contact.contactId, stored->first().misc);
}

bool DaoContact::isUpdateLastModificationDateNeeded(const ListContact &stored, const Contact &contact)
{
    const bool needed = !stored.isEmpty() && !isSameContent(stored.first(), contact);
    KestinLogger::debug("isUpdateLastModificationDateNeeded : %1", needed ? "true" : "false");
    return needed;
}

bool DaoContact::updateContactFromImport(const Contact &contact)
{
    KestinLogger::debug("DaoContact::updateContactFromImport : idContact:%1", contact.contactId);
    Statement::Use use = m_statements.updateFromImport.use();
    ContactRow::bindUpdate(use, contact);
    return use.bind(contact.getPUID(), contact.contactId).execute();
}

bool DaoContact::fillMissingLatinNames()
{
    return addLatinFunction(m_connection.database()) && m_statements.fillLatinNames.use().execute();
}

bool DaoContact::deleteContact(const QString &contactId)
{
    KestinLogger::debug("DaoContact::deleteContact : idcontact:%1", contactId);
    Statement::Use use = m_statements.remove.use(contactId);
    if (!use.execute())
        return false;
    adjustCount(-use.rowsAffected());
    return true;
}

bool DaoContact::deleteCachedContact(const QString &contactId)
{
    const auto pairs = m_misc.pairs(contactId); // a trigger takes all of this id away
    if (!pairs)
        return false;
    Statement::Use use = m_statements.removeCached.use(contactId);
    if (!use.execute())
        return false;
    adjustCount(-use.rowsAffected());
    return m_misc.replacePairs(contactId, *pairs);
}

bool DaoContact::updateIdContact(const QString &newId)
{
    KestinLogger::debug("DaoContact::updateIdContact :idcontact:%1", newId);
    return m_statements.updateId.use(newId).execute();
}

bool DaoContact::updatePuidContact(const QString &contactId, const QString &puid)
{
    KestinLogger::debug("DaoContact::updatePuidContact :idcontact:%1", contactId);
    return m_statements.updatePuid.use(puid, contactId).execute();
}

bool DaoContact::updatePhotoContact(const QString &contactId, const QString &photo)
{
    KestinLogger::debug("DaoContact::updatePhotoContact :idcontact:%1", contactId);
    return m_statements.updatePhoto.use(photo, contactId).execute();
}

bool DaoContact::updateContactPreview(const QString &contactId, bool isPreviewed)
{
    KestinLogger::debug("DaoContact::updateContactPreview : idContact:%1", contactId);
    return m_statements.updatePreview.use(isPreviewed, contactId).execute();
}

bool DaoContact::updateContactsPreview(const QStringList &contactIds, bool isPreviewed)
{
    KestinLogger::debug("DaoContact::updateContactsPreview called");
    if (contactIds.isEmpty()) {
        KestinLogger::error("DaoContact::updateContactsPreview : the list of contact ids is empty !");
        return false;
    }
    Statement statement(m_connection,
                        QLatin1String("UPDATE CONTACT SET isPreviewed=:isPreviewed WHERE contactId IN (") +
                            QueryText::idList(contactIds));
    return statement.use(isPreviewed).execute();
}

std::optional<int> DaoContact::readNumber(Statement::Use &use)
{
    std::optional<int> count;
    if (!use.eachRow([&count](const Statement::Use &row) { count = int(row.number(0)); }))
        return std::nullopt;
    return count;
}

std::optional<int> DaoContact::countOf(Statement &statement)
{
    Statement::Use use = statement.use();
    return readNumber(use);
}

void DaoContact::adjustCount(int difference)
{
    if (m_count)
        *m_count += difference;
}

std::optional<int> DaoContact::nbContact()
{
    if (!m_count || m_countEpoch != m_connection.epoch())
        m_count = countOf(m_statements.count);
    m_countEpoch = m_connection.epoch();
    KestinLogger::debug("DaoContact::nbContact : total number of contacts = %1", m_count.value_or(0));
    return m_count;
}

std::optional<int> DaoContact::nbDMContacts()
{
    const std::optional<int> count = countOf(m_statements.countDM);
    KestinLogger::debug("DaoContact::nbDMContacts : total number of DM contacts = %1", count.value_or(0));
    return count;
}

std::optional<int> DaoContact::nbLocalUserContacts()
{
    const std::optional<int> count = countOf(m_statements.countLocal);
    KestinLogger::debug("DaoContact::nbLocalUserContacts : total number of local contacts = %1", count.value_or(0));
    return count;
}

std::optional<int> DaoContact::_nbCachedContactQuery()
{
    const std::optional<int> count = countOf(m_statements.countCached);
    KestinLogger::debug("DaoContact::_nbCachedContactQuery : total number of cached contacts = %1", count.value_or(0));
    return count;
}

std::optional<int> DaoContact::_nbContactsUsingThisPhotoQuery(const QString &photo)
{
    Statement::Use use = m_statements.countPhoto.use(photo);
    const std::optional<int> count = readNumber(use);
    KestinLogger::debug("DaoContact::_nbContactsUsingThisPhotoQuery : number of contacts using photo %1 = %2",
                        AddressText::withoutUserInfo(photo), count.value_or(0));
    return count;
}

std::optional<ListContact> DaoContact::readContacts(Statement::Use &use)
{
    bool areComplete = true;
    // The pairs while the statement runs, which keeps the lock that each look for pairs would take of its own.
    const auto whole = [&](const Statement::Use &row) {
        Contact contact = ContactRow::read(row);
        areComplete = areComplete && m_misc.fill(contact);
        return contact;
    };
    std::optional<ListContact> contacts = readRows(use, whole);
    return areComplete ? contacts : std::nullopt;
}

std::optional<QString> DaoContact::getOldestCachedContactId()
{
    KestinLogger::debug("DaoContact::getOldestCachedContactId");
    QString id;
    Statement::Use use = m_statements.oldestCached.use();
    if (!use.eachRow([&id](const Statement::Use &row) { id = row.text(0); }))
        return std::nullopt;
    return id;
}

std::optional<ListContact> DaoContact::getContact(const QString &contactId)
{
    KestinLogger::debug("DaoContact::getContact : idContact:%1", contactId);
    Statement::Use use = m_statements.byId.use(contactId);
    return readContacts(use);
}

std::optional<int> DaoContact::typeOf(const QString &contactId)
{
    Statement::Use use = m_statements.typeById.use(contactId);
    return readNumber(use);
}

std::optional<ListContact> DaoContact::getAllContact()
{
    KestinLogger::debug("DaoContact::getAllContact");
    Statement::Use use = m_statements.all.use();
    return readContacts(use);
}

std::optional<ListContact> DaoContact::getAllContact(int start, int length)
{
    KestinLogger::debug("DaoContact::getAllContact : start:%1 / length:%2", start, length);
    if (start < PageStarts::far) {
        Statement::Use use = m_statements.page.use(start, length);
        return readContacts(use);
    }
    PageStarts &starts = pageStarts();
    const auto [place, id] = starts.before(start);
    Statement::Use use =
        id.isEmpty() ? m_statements.page.use(start, length) : m_statements.pageFrom.use(id, start - place, length);
    std::optional<ListContact> contacts = readContacts(use);
    if (contacts && !contacts->isEmpty() && place < start) {
        Statement::Use count = m_statements.countId.use(contacts->first().contactId);
        if (readNumber(count) == 1)
            starts.note(start, contacts->first().contactId);
    }
    return contacts;
}

PageStarts &DaoContact::pageStarts()
{
    Statement::Use use = m_statements.dataVersion.use();
    const std::optional<int> ofOthers = readNumber(use);
    const std::tuple version(m_connection.epoch(), m_connection.changes(), ofOthers.value_or(0));
    if (!ofOthers || version != m_pageStartsVersion)
        m_pageStarts.clear();
    m_pageStartsVersion = version;
    return m_pageStarts;
}

std::optional<ListContact> DaoContact::getAllContactInPreview(int start, int length)
{
    KestinLogger::debug("DaoContact::getAllContactInPreview : start:%1 / length:%2", start, length);
    Statement::Use use = m_statements.previewPage.use(start, length);
    return readContacts(use);
}

std::optional<ListContact> DaoContact::getContactByType(int type)
{
    KestinLogger::debug("DaoContact::getContactByType : type:%1", type);
    Statement::Use use = m_statements.byType.use(type);
    return readContacts(use);
}

std::optional<ListContact> DaoContact::getContactsByEmailAddress(const QString &emailAddress)
{
    KestinLogger::debug("DaoContact::getContactsByEmailAddress: emailAddress:%1", emailAddress);
    Statement::Use use = m_statements.byEmail.use(emailAddress);
    return readContacts(use);
}

std::optional<ListContact> DaoContact::getContactByIMAddress(const QString &imAddress)
{
    KestinLogger::debug("DaoContact::getContactByIMAddress: imAddress:%1", imAddress);
    Statement::Use use = m_statements.byIMAddress.use(imAddress);
    return readContacts(use);
}

std::optional<ListContact> DaoContact::getContactByPhoneNumber(const QString &number)
{
    if (number.isEmpty()) {
        KestinLogger::warning("getContactByPhoneNumber : empty phoneNumber, returns empty list");
        return ListContact();
    }
    Statement::Use use = m_statements.byNumber.use(number, number, number, number, number);
    return readContacts(use);
}

std::optional<QStringList> DaoContact::_getCachedContactsWithMatchingOfficePhone(const Contact &contact)
{
    KestinLogger::debug("DaoContact::_getCachedContactsWithMatchingOfficePhone for contact: %1", contact.contactId);
    Statement::Use use = m_statements.cachedByNumber.use();
    for (const auto number : {&Contact::officePhoneCan, &Contact::faxCan, &Contact::personalHomeCan,
                              &Contact::personalMobileCan, &Contact::personalFaxCan}) {
        // NULL is equal to nothing: two contacts without a number are not the same person.
        if ((contact.*number).isEmpty())
            use.bind(nullptr);
        else
            use.bind(contact.*number);
    }
    QStringList ids;
    if (!use.eachRow([&ids](const Statement::Use &row) { ids.append(row.text(0)); }))
        return std::nullopt;
    return ids;
}
