// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_Item.h"
#include "platform/records/Contact.h"
#include "src/impexp/ImportRoom.h"
#include "src/photofiles/PhotoFiles.h"

#include <QStringList>

#include <optional>

/// The photo files of an import: which are written, and which nobody needs any more. A file that the store names is
/// never written over, so that undoing the import undoes its photos too.
class ImportPhotos
{
public:
    ImportPhotos(PhotoFiles &files, DaoContact &dao, const QString &directory);

    /// False when it depends on what goes whether all is kept. Then apply() has to wait until each item with its
    /// contact's photo has been told to expect(), and settle() has been called after the last item.
    bool haveRoomFor(qint64 bytes) const { return bytes <= m_files.room(); }
    void expect(const ImpExp_Item &item, const QString &photo);
    void settle();

    enum Result { Same, Replaced, NotKept, NoImage };
    /// Makes the contact's photo the image of the item. Same: it was, or there is neither, or no export can carry the
    /// photo. NotKept, for want of room, and NoImage, as it is no base64 or too large: the old photo stays.
    Result apply(const ImpExp_Item &item, Contact &contact);

    /// Nobody names it from now on; a file that is not our own stays.
    void drop(const QString &photo);

    /// Files to remove when all was written, or when all was undone.
    const QStringList &dropped() const { return m_dropped; }
    const QStringList &written() const { return m_written; }

private:
    static std::optional<QByteArray> imageOf(const ImpExp_Item &item);
    Result clear(Contact &contact);
    bool isOwn(const QString &photo) const;
    bool isExported(const QString &photo) const;

    PhotoFiles &m_files;
    QString m_directory;
    ImportRoom m_room;
    QStringList m_dropped;
    QStringList m_written;
};
