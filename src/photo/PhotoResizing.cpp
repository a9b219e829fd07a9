// SPDX-License-Identifier: Apache-2.0
#include "src/photo/PhotoResizing.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"
#include "platform/records/DirectoryCodes.h"
#include "src/dao/DaoContact.h"
#include "src/photofiles/PhotoFiles.h"
#include "src/photofiles/PictureProgram.h"
#include "src/photofiles/SquarePicture.h"

#include <QDeadlineTimer>
#include <QFile>

#include <algorithm>

PhotoResizing::PhotoResizing(DaoContact &dao, PhotoFiles &files, const PictureProgram &pictures, const QString &mark,
                             std::chrono::milliseconds limit)
    : m_dao(dao)
    , m_files(files)
    , m_pictures(pictures)
    , m_markPath(mark)
    , m_limit(limit)
{
}

bool PhotoResizing::resizeAndCropToSquare(const QString &source, int side, const QString &destination) const
{
    const QByteArray square = m_pictures.squareOf({source, std::nullopt, side});
    return !square.isNull() && PhotoFiles::write(destination.isNull() ? source : destination, square);
}

void PhotoResizing::resizeContactPhotosIfNeeded()
{
    KestinLogger::debug("KestinDirectory::resizeContactPhotosIfNeeded()");
    // A picture that is begun has its whole time.
    const QDeadlineTimer lastBegin(m_limit - m_pictures.limit());
    m_marks.emplace(m_markPath);
    const std::optional<ListContact> contacts = candidates(m_marks->first());
    if (!contacts)
        return;
    const auto isLate = [this, &lastBegin](const Contact &contact) {
        if (!needsResizing(contact))
            return false;
        if (lastBegin.hasExpired())
            return true;
        resizePhoto(contact);
        return false;
    };
    const auto late = std::find_if(contacts->cbegin(), contacts->cend(), isLate);
    const QString next = late != contacts->cend() ? late->contactId : QString();
    if (!next.isEmpty())
        KestinLogger::warning("Making photos square takes too long; the next start goes on with contact %1", next);
    m_marks->keep(next);
    m_marks.reset();
    m_resized.clear();
    m_files.recount();
}

/// Beginning where the last pass was stopped, if it was.
std::optional<ListContact> PhotoResizing::candidates(const QString &first) const
{
    // Thousands of contacts are read for their lines in the log only when these are wanted.
    std::optional<ListContact> contacts = KestinLogger::isOn(KestinLogger::Debug)
                                              ? m_dao.getAllContact()
                                              : m_dao.getContactsWithUnresizedPhoto(SquarePicture::suffix());
    if (!contacts)
        return std::nullopt;
    const auto isFirst = [&first](const Contact &contact) { return contact.contactId == first; };
    if (const auto begin = std::find_if(contacts->begin(), contacts->end(), isFirst); begin != contacts->end())
        std::rotate(contacts->begin(), begin, contacts->end());
    return contacts;
}

bool PhotoResizing::needsResizing(const Contact &contact)
{
    const QString &id = contact.contactId;
    if (contact.type == ContactType::DeviceManagement) {
        KestinLogger::debug(
            "KestinDirectory::resizeContactPhotosIfNeeded - contact %1 is from DM => we don't touch the "
            "photo!",
            id);
    } else if (contact.photo.isEmpty()) {
        KestinLogger::debug("KestinDirectory::resizeContactPhotosIfNeeded - contact %1, no photo, nothing to do.", id);
    } else if (contact.photo.startsWith(QLatin1String("http"))) {
        KestinLogger::debug("KestinDirectory::resizeContactPhotosIfNeeded - contact %1, photo is not local, nothing to "
                            "do.",
                            id);
    } else if (contact.photo.endsWith(SquarePicture::suffix())) {
        KestinLogger::debug("KestinDirectory::resizeContactPhotosIfNeeded - contact %1, photo already resized, nothing "
                            "to do.",
                            id);
    } else {
        KestinLogger::debug("KestinDirectory::resizeContactPhotosIfNeeded - contact %1, photo will be resized!", id);
        return true;
    }
    return false;
}

/// Path of the resized file, made by this or an earlier contact; nothing when it could not be made.
std::optional<QString> PhotoResizing::resized(const QString &photo)
{
    const auto known = m_resized.constFind(photo);
    if (known != m_resized.cend())
        return *known;
    const auto path = squarePathFor(photo);
    return *m_resized.insert(photo, path && isMade(photo, *path) ? path : std::nullopt);
}

/// Another path where a contact has the usual file already: names of files come again. Nothing when that cannot be
/// known.
std::optional<QString> PhotoResizing::squarePathFor(const QString &photo) const
{
    for (int number = 1;; ++number) {
        const QString path =
            (number == 1 ? photo : QStringLiteral("%1_%2").arg(photo).arg(number)) + SquarePicture::suffix();
        const std::optional<int> users = m_dao._nbContactsUsingThisPhotoQuery(path);
        if (!users)
            return std::nullopt;
        if (*users == 0)
            return path;
    }
}

/// A picture that runs over costs so much of a start that it is not tried again at each.
bool PhotoResizing::isMade(const QString &photo, const QString &square)
{
    if (m_marks->isPassedOver(photo))
        return false;
    const QDeadlineTimer limit(m_pictures.limit(), Qt::PreciseTimer);
    if (resizeAndCropToSquare(photo, SquarePicture::side, square))
        return true;
    if (limit.hasExpired())
        m_marks->passOver(photo);
    return false;
}

void PhotoResizing::resizePhoto(const Contact &contact)
{
    const QString &photo = contact.photo;
    const auto path = resized(photo);
    if (!path) {
        KestinLogger::error("KestinDirectory::resizeContactPhotosIfNeeded: failed while trying to resize photo: %1 to "
                            "%2",
                            AddressText::withoutUserInfo(photo),
                            AddressText::withoutUserInfo(photo + SquarePicture::suffix()));
        return;
    }
    KestinLogger::debug("KestinDirectory::resizeContactPhotosIfNeeded: successfully resized photo: %1 to %2", photo,
                        *path);
    if (!m_dao.updatePhotoContact(contact.contactId, *path)) {
        KestinLogger::error("KestinDirectory::resizeContactPhotosIfNeeded : local contact id %1 could NOT be updated. "
                            "Res=%2",
                            contact.contactId, ResultCode::writeFailed);
        return;
    }
    KestinLogger::debug("KestinDirectory::resizeContactPhotosIfNeeded : local contact id %1 has been updated",
                        contact.contactId);
    // The old file goes last, so that whatever stops the phone, each contact names a file that is there.
    if (m_dao._nbContactsUsingThisPhotoQuery(photo) == 0 && !QFile::remove(photo))
        KestinLogger::warning("Photo file %1 could not be removed", photo);
    if (const auto updated = m_dao.getContact(contact.contactId))
        Q_EMIT contactsUpdated(*updated, false);
}

#include "moc_PhotoResizing.cpp"
