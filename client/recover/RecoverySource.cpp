// SPDX-License-Identifier: Apache-2.0
#include "client/recover/RecoverySource.h"

#include "client/bus/CommandFailure.h"
#include "client/photo/PhotoFolder.h"
#include "client/photo/PhotoSource.h"
#include "client/photo/PictureFile.h"

#include <QFileInfo>

StoredPhoto StoredPhoto::of(const QString &photo)
{
    if (photo.isEmpty())
        return {};
    if (PhotoSource::isAddress(photo))
        return {Kind::Address, photo};
    const QFileInfo stored(photo);
    const QFileInfo here(PhotoFolder::path() + stored.fileName());
    const bool isOfFolder = stored.path().endsWith(QLatin1String("/KestinDirectory/photos"));
    if (isOfFolder && !stored.fileName().isEmpty() && here.isFile())
        return {Kind::InFolder, here.filePath()};
    if (stored.isAbsolute() && PictureFile::sizeOf(photo))
        return {Kind::Elsewhere, photo};
    return {Kind::Missing, {}};
}

RecoverySource::RecoverySource(const QString &file, const ListContact &contacts)
    : m_file(file)
    , m_contacts(contacts)
{
}

std::optional<ImportCard> RecoverySource::next()
{
    if (m_next == m_contacts.size())
        return std::nullopt;
    const Contact &stored = m_contacts.at(m_next++);
    ImportCard card{{m_file, 0, stored.displayName(), {}}, stored, {}, {}, {}};
    const StoredPhoto photo = StoredPhoto::of(stored.photo);
    card.contact.contactId.clear(); // may be somebody else's by now
    card.contact.photo = photo.kind == StoredPhoto::Kind::Elsewhere ? QString() : photo.path;
    try {
        if (photo.kind == StoredPhoto::Kind::Elsewhere)
            card.picture = PictureFile::read(photo.path);
    } catch (const CommandFailure &) {
        // It was there a moment ago; now it is one of those that are missing.
    }
    return card;
}
