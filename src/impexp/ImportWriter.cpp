// SPDX-License-Identifier: Apache-2.0
#include "src/impexp/ImportWriter.h"

#include "platform/framework/KestinLogger.h"
#include "platform/impexp/ImpExp_Exception.h"
#include "src/dao/DaoContact.h"
#include "src/dao/Transaction.h"
#include "src/impexp/ImportErrors.h"

#include <utility>

namespace {

qsizetype sizeOf(const Contact &contact)
{
    qsizetype size = 0;
    for (const Contact::TextField &field : Contact::texts)
        size += (contact.*field.value).size();
    for (const QString &value : contact.misc)
        size += value.size();
    return size;
}

} // namespace

const QString ImportWriter::databaseFailure = QStringLiteral("The contacts cannot be written to the database.");

ImportWriter::ImportWriter(DaoContact &dao, CanonicalNumbers &numbers, ImportPhotos &photos, ImportErrors &errors,
                           LongWork &longWork)
    : m_dao(dao)
    , m_numbers(numbers)
    , m_pause(numbers)
    , m_photos(photos)
    , m_errors(errors)
    , m_longWork(longWork)
{
}

void ImportWriter::add(const Entry &entry)
{
    m_waiting.append(entry);
    m_waitingSize += sizeOf(entry.contact);
}

bool ImportWriter::isFull() const
{
    constexpr qsizetype atATime = 100;
    constexpr qsizetype largest = 1024 * 1024; // characters that wait, were the texts of a contact ever so long
    return m_waiting.size() >= atATime || m_waitingSize >= largest;
}

Work ImportWriter::write()
{
    Asked next = askForNumbers();
    Asked asked = std::exchange(m_asked, std::move(next));
    if (asked.numbers && asked.numbers->call())
        co_await m_longWork.answerTo(*asked.numbers->call());
    fillNumbers(asked);
    for (Entry &entry : asked.entries) {
        write(entry);
        co_await m_longWork.turn();
    }
}

Work ImportWriter::flush()
{
    co_await write();
    co_await write();
}

ListContact ImportWriter::inNeedOfNumbers(const QList<Entry> &entries)
{
    ListContact contacts;
    for (const Entry &entry : entries) {
        if (entry.needsNumbers)
            contacts.append(entry.contact);
    }
    return contacts;
}

ImportWriter::Asked ImportWriter::askForNumbers()
{
    Asked asked{std::exchange(m_waiting, {}), {}};
    m_waitingSize = 0;
    if (const ListContact contacts = inNeedOfNumbers(asked.entries); !contacts.isEmpty())
        asked.numbers = m_numbers.askForCanonicalNumbers(contacts);
    return asked;
}

void ImportWriter::fillNumbers(Asked &asked)
{
    if (!asked.numbers)
        return;
    ListContact contacts = inNeedOfNumbers(asked.entries);
    asked.numbers->fill(contacts);
    auto filled = contacts.cbegin();
    for (Entry &entry : asked.entries) {
        if (entry.needsNumbers)
            entry.contact = *filled++;
    }
}

void ImportWriter::write(Entry &entry)
{
    const QString duid = entry.isNew ? QString() : entry.contact.contactId;
    KestinLogger::debug(entry.isNew ? "KestinDirectory::importFromXml :insert new contact in DB."
                                    : "KestinDirectory::importFromXml :update contact into the DB.");
    const bool isStored = !entry.isChanged || store(entry);
    if (entry.contact.photo != entry.photoBefore)
        m_photos.drop(isStored ? entry.photoBefore : entry.contact.photo);
    if (!isStored) {
        m_errors.cannotImport(duid, QStringLiteral("the database refused it"));
        return;
    }
    m_hasWritten |= entry.isChanged;
    if (entry.photo == ImportPhotos::NoImage)
        m_errors.noImage(entry.contact.contactId);
    else if (entry.photo == ImportPhotos::NotKept)
        KestinLogger::warning(ImportErrors::noPhotoFile, entry.contact.contactId);
    KestinLogger::debug(entry.isNew ? "KestinDirectory::importFromXml: create contact : %1"
                                    : "KestinDirectory::importFromXml: modify contact : %1",
                        entry.contact.contactId);
}

bool ImportWriter::store(Entry &entry)
{
    Contact &contact = entry.contact;
    Transaction transaction(m_dao.connection());
    if (!transaction.isActive())
        throw ImpExp_FatalException(databaseFailure);
    const bool isWritten = entry.isNew ? m_dao.insertContact(contact, true) : m_dao.updateContactFromImport(contact);
    return isWritten && m_dao.misc().replacePairs(contact.contactId, contact.misc) && transaction.commit();
}
