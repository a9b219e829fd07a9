// SPDX-License-Identifier: Apache-2.0
#include "src/impexp/ImportRun.h"

#include "platform/framework/KestinLogger.h"
#include "platform/impexp/ImpExp_Exception.h"
#include "platform/impexp/ImpExp_Format.h"
#include "platform/impexp/ImpExp_XMLParser.h"
#include "platform/records/LatinText.h"
#include "src/dao/DaoContact.h"
#include "src/dao/Transaction.h"
#include "src/impexp/StoreFailure.h"
#include "src/impexp/SyncElements.h"

#include <QFileInfo>

#include <algorithm>

namespace {

/// Whether a number that has a canonical form differs.
bool haveOtherNumbers(const Contact &one, const Contact &other)
{
    return one.officePhone != other.officePhone || one.fax != other.fax || one.personalMobile != other.personalMobile ||
           one.personalHome != other.personalHome || one.personalFax != other.personalFax;
}

/// What was read of the store; what cannot be read ends the import, so that nobody is taken for gone.
template <typename Value>
Value readOrFail(const std::optional<Value> &value)
{
    if (!value)
        throw ImpExp_FatalException(StoreFailure::unreadable);
    return *value;
}

/// In the order in which the contacts were made.
QStringList sortedIds(const QHash<QString, QString> &puids)
{
    QStringList ids = puids.keys();
    std::sort(ids.begin(), ids.end(), [](const QString &one, const QString &other) {
        return std::pair(one.size(), one) < std::pair(other.size(), other);
    });
    return ids;
}

} // namespace

ImportRun::ImportRun(const DirectoryFields &fields, RemoteCaller &telephony, PhotoFiles &photoFiles, LongWork &longWork)
    : m_dao(m_database.contacts())
    , m_fields(fields)
    , m_longWork(longWork)
    , m_numbers(telephony)
    , m_photos(photoFiles, m_dao, fields.photoDirectory)
    , m_writer(m_dao, m_numbers, m_photos, m_errors, longWork)
{
}

Work ImportRun::execute(QString path)
{
    Transaction transaction(m_dao.connection());
    if (!transaction.isActive() || !m_dao.lockForWriting()) {
        KestinLogger::error("KestinDirectory::importFromXml : error while trying to begin a unique transaction during "
                            "the import process on the database.");
        m_outcome = failure(ImportWriter::databaseFailure);
        co_return;
    }
    try {
        co_await apply(path);
    } catch (const ImpExp_FatalException &exception) {
        m_outcome = failure(exception.message());
        co_return;
    }
    if (transaction.commit())
        co_return;
    KestinLogger::error("KestinDirectory::importFromXml : error while trying to commit a unique transaction during the "
                        "import process to the database.");
    m_outcome = failure(m_outcome.status == ImpExpStatus::Success ? ImportWriter::databaseFailure : m_outcome.cause);
}

Work ImportRun::apply(QString path)
{
    co_await readPuids();
    const qint64 capacity = qint64(m_fields.maxContacts) - readOrFail(m_dao.nbDMContacts());
    co_await readIds(path, capacity);
    if (m_itemCount > capacity) {
        KestinLogger::info("KestinDirectory::importFromXml : number of contacts to import is higher than the "
                           "maximum one allowed.");
        m_outcome = failure(QStringLiteral("The number of contacts to import is higher than the maximum one allowed."));
        co_return;
    }
    co_await removeUnlisted();
    co_await weighPhotos(path);
    co_await readContacts(path);
    m_outcome = success();
}

Work ImportRun::readPuids()
{
    ContactWalk contacts = m_dao.getLocalPuids();
    while (const auto contact = contacts.next()) {
        m_puids.insert(contact->contactId, contact->getPUID());
        co_await m_longWork.turn();
    }
    if (!contacts.isAtEnd())
        throw ImpExp_FatalException(StoreFailure::unreadable);
}

/// Up to the first for which there is no room.
Work ImportRun::readIds(QString path, qint64 capacity)
{
    KestinLogger::debug("KestinDirectory::importFromXml : get all DUID from import file.");
    ImpExp_XMLParser parser(path);
    ImpExp_Item item(ImpExp_Format::contact);
    while (m_itemCount <= capacity && parser.getItem(item, false)) {
        ++m_itemCount;
        m_listed.insert(item.getAttribute(ImpExp_Format::duid));
        co_await m_longWork.turn();
    }
}

Work ImportRun::removeUnlisted()
{
    KestinLogger::debug("KestinDirectory::importFromXml : remove contacts from database.");
    const QStringList ids = sortedIds(m_puids);
    for (const QString &id : ids) {
        if (!m_listed.contains(id))
            remove(id);
        co_await m_longWork.turn();
    }
}

void ImportRun::remove(const QString &contactId)
{
    const ListContact found = readOrFail(m_dao.getContact(contactId));
    Transaction transaction(m_dao.connection());
    if (!transaction.isActive())
        throw ImpExp_FatalException(ImportWriter::databaseFailure);
    if (!m_dao.deleteContact(contactId) || !transaction.commit()) {
        m_errors.cannotImport(contactId, QStringLiteral("the database refused to delete it"));
        return;
    }
    KestinLogger::debug("KestinDirectory::importFromXml: delete contact : %1", contactId);
    m_deletedIds.append(contactId);
    for (const Contact &contact : found)
        m_photos.drop(contact.photo);
}

/// Photos that fit once the old ones are gone are kept, in whatever order the file has them.
Work ImportRun::weighPhotos(QString path)
{
    if (m_photos.haveRoomFor(QFileInfo(path).size()))
        co_return; // the file is larger than what is in it, so it need not be read for this
    ImpExp_XMLParser parser(path);
    ImpExp_Item item(ImpExp_Format::contact);
    for (bool isMore = true; isMore;) {
        try {
            isMore = parser.getItem(item, true);
            if (isMore && item.hasElements())
                m_photos.expect(item, storedContact(item.getAttribute(ImpExp_Format::duid)).photo);
        } catch (const ImpExp_ErrorException &) { // is told when the contact is taken
        }
        co_await m_longWork.turn();
    }
    m_photos.settle();
}

/// Without an id when there is none.
Contact ImportRun::storedContact(const QString &duid)
{
    return duid.isEmpty() ? Contact() : readOrFail(m_dao.getContact(duid)).value(0);
}

Work ImportRun::readContacts(QString path)
{
    KestinLogger::debug("KestinDirectory::importFromXml :parse each contact from the import file.");
    ImpExp_XMLParser parser(path);
    ImpExp_Item item(ImpExp_Format::contact);
    while (takeNext(parser, item)) {
        if (m_writer.isFull())
            co_await m_writer.write();
        co_await m_longWork.turn();
    }
    co_await m_writer.flush();
    if (m_itemCount != 0 || m_taken != m_listed)
        throw ImpExp_FatalException(QStringLiteral("the file has changed while it was read"));
}

/// False at the end of the file.
bool ImportRun::takeNext(ImpExp_XMLParser &parser, ImpExp_Item &item)
{
    try {
        if (!parser.getItem(item, true))
            return false;
        const QString duid = item.getAttribute(ImpExp_Format::duid);
        if (!duid.isEmpty() && m_taken.contains(duid))
            throw ImpExp_ErrorException(QStringLiteral("it is in the file twice"));
        take(item, duid);
    } catch (const ImpExp_ErrorException &exception) {
        m_errors.cannotImport(item.getAttribute(ImpExp_Format::duid), exception.message());
    }
    m_taken.insert(item.getAttribute(ImpExp_Format::duid));
    --m_itemCount;
    return true;
}

void ImportRun::take(const ImpExp_Item &item, const QString &duid)
{
    if (!item.hasElements())
        map(item, duid);
    else if (duid.isEmpty())
        create(item);
    else
        update(item, duid);
}

void ImportRun::map(const ImpExp_Item &item, const QString &duid)
{
    if (!m_puids.contains(duid)) {
        m_errors.notStored(duid);
        return;
    }
    const QString puid = item.getAttribute(ImpExp_Format::puid);
    if (!item.hasAttribute(ImpExp_Format::puid) || m_puids.value(duid) == puid)
        return;
    Transaction transaction(m_dao.connection());
    if (!transaction.isActive())
        throw ImpExp_FatalException(ImportWriter::databaseFailure);
    if (!m_dao.updatePuidContact(duid, puid) || !transaction.commit())
        m_errors.cannotImport(duid, QStringLiteral("the database refused it"));
    else
        m_isMapped = true;
}

void ImportRun::create(const ImpExp_Item &item)
{
    ImportWriter::Entry entry;
    entry.isNew = true;
    SyncElements::copy(item, entry.contact);
    fillLatinNames(entry.contact);
    entry.needsNumbers = haveOtherNumbers(entry.contact, {});
    entry.photo = m_photos.apply(item, entry.contact);
    m_writer.add(entry);
}

void ImportRun::update(const ImpExp_Item &item, const QString &duid)
{
    const Contact stored = storedContact(duid);
    // One that only this import has made may have got the id of a contact that is gone.
    if (stored.contactId.isEmpty() || (stored.type == ContactType::Local && !m_puids.contains(duid))) {
        m_errors.notStored(duid);
        return;
    }
    if (stored.type != ContactType::Local) {
        m_errors.notLocal(duid);
        return;
    }
    ImportWriter::Entry entry{.contact = stored, .photoBefore = stored.photo};
    SyncElements::copy(item, entry.contact);
    fillLatinNames(entry.contact);
    entry.needsNumbers = haveOtherNumbers(entry.contact, stored);
    entry.photo = m_photos.apply(item, entry.contact);
    entry.isChanged = entry.contact != stored;
    m_writer.add(entry);
}

ImportRun::Outcome ImportRun::success() const
{
    return {.status = ImpExpStatus::Success,
            .cause = m_errors.lines(),
            .deletedIds = m_deletedIds,
            .errors = m_errors.texts(),
            .droppedPhotos = m_photos.dropped(),
            .isChanged = m_isMapped || m_writer.hasWritten() || !m_deletedIds.isEmpty()};
}

/// What was written is undone by the transaction; its photo files are left.
ImportRun::Outcome ImportRun::failure(const QString &cause) const
{
    return {.status = ImpExpStatus::Failure,
            .cause = KestinLogger::shown(cause),
            .deletedIds = {},
            .errors = {},
            .droppedPhotos = m_photos.written(),
            .isChanged = false};
}
