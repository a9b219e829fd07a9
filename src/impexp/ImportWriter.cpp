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

ImportWriter::ImportWriter(DaoContact &dao, CanonicalNumbers &numbers, ImportPhotos &photos, ImportErrors &errors)
    : m_dao(dao)
    , m_numbers(numbers)
    , m_pause(numbers)
    , m_photos(photos)
    , m_errors(errors)
{
}

void ImportWriter::add(const Entry &entry)
{
    constexpr qsizetype atATime = 100;
    constexpr qsizetype largest = 1024 * 1024; // characters that wait, were the texts of a contact ever so long
    m_waiting.append(entry);
    m_waitingSize += sizeOf(entry.contact);
    if (m_waiting.size() >= atATime || m_waitingSize >= largest)
        askForNumbers();
}

void ImportWriter::flush()
{
    askForNumbers();
    writeAsked();
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

/// For those that wait; then writes those that were asked for before.
void ImportWriter::askForNumbers()
{
    Asked next{std::exchange(m_waiting, {}), {}};
    m_waitingSize = 0;
    if (const ListContact contacts = inNeedOfNumbers(next.entries); !contacts.isEmpty())
        next.numbers = m_numbers.askForCanonicalNumbers(contacts);
    writeAsked();
    m_asked = std::move(next);
}

void ImportWriter::writeAsked()
{
    Asked asked = std::exchange(m_asked, {});
    if (asked.numbers) {
        ListContact contacts = inNeedOfNumbers(asked.entries);
        asked.numbers->fill(contacts);
        auto filled = contacts.cbegin();
        for (Entry &entry : asked.entries) {
            if (entry.needsNumbers)
                entry.contact = *filled++;
        }
    }
    for (Entry &entry : asked.entries)
        write(entry);
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
