// SPDX-License-Identifier: Apache-2.0
#include "src/impexp/ImportPhotos.h"

#include "platform/framework/KestinLogger.h"
#include "platform/impexp/ImpExp_Format.h"
#include "src/fields/PhotoRules.h"
#include "src/impexp/LocalPhoto.h"

#include <algorithm>

ImportPhotos::ImportPhotos(PhotoFiles &files, DaoContact &dao, const QString &directory)
    : m_files(files)
    , m_directory(directory)
    , m_room(dao)
{
}

void ImportPhotos::expect(const ImpExp_Item &item, const QString &photo)
{
    if (const auto image = imageOf(item))
        m_room.expect(image->size(), isExported(photo) ? photo : QString());
}

void ImportPhotos::settle()
{
    m_room.addUnnamed(m_dropped);
    m_room.settle(m_files.room());
}

/// Empty when the item has none, nothing when it cannot be used.
std::optional<QByteArray> ImportPhotos::imageOf(const ImpExp_Item &item)
{
    QByteArray text = item.getElement(ImpExp_Format::photo).toLatin1();
    const auto isBlank = [](char byte) { return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r'; };
    text.erase(std::remove_if(text.begin(), text.end(), isBlank), text.end());
    const auto image = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    // The decoder lets an incomplete last group pass.
    if (!image || text.size() != (image.decoded.size() + 2) / 3 * 4 || image.decoded.size() > LocalPhoto::maxBytes)
        return std::nullopt;
    return image.decoded;
}

ImportPhotos::Result ImportPhotos::apply(const ImpExp_Item &item, Contact &contact)
{
    const std::optional<QByteArray> image = imageOf(item);
    if (!image)
        return NoImage;
    if (image->isEmpty())
        return clear(contact);
    if (LocalPhoto::isLocal(contact.photo)) {
        const auto stored = LocalPhoto::read(contact.photo);
        if (!stored)
            KestinLogger::warning("Can't read the local photo file for contact : %1", contact.contactId);
        else if (*stored == *image)
            return Same;
    }
    const qint64 gain = isOwn(contact.photo) ? m_room.gainOf(contact.photo) : 0;
    const auto path = m_files.keep(*image, m_room.leaving() + gain);
    if (!path)
        return NotKept;
    m_room.add(gain);
    m_written.append(*path);
    contact.photo = *path;
    return Replaced;
}

/// That the file has no photo means nothing where an export could not have put it there.
ImportPhotos::Result ImportPhotos::clear(Contact &contact)
{
    if (!isExported(contact.photo))
        return Same;
    m_room.add(m_room.gainOf(contact.photo));
    contact.photo.clear();
    return Replaced;
}

void ImportPhotos::drop(const QString &photo)
{
    if (isOwn(photo))
        m_dropped.append(photo);
}

bool ImportPhotos::isOwn(const QString &photo) const
{
    return PhotoRules::isOurs(photo, m_directory);
}

/// Whether it is a file of our own that an export writes into its file.
bool ImportPhotos::isExported(const QString &photo) const
{
    return isOwn(photo) && LocalPhoto::read(photo);
}
