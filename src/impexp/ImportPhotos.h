// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_Item.h"
#include "platform/records/Contact.h"
#include "src/impexp/ImportCalls.h"

#include <QStringList>

#include <optional>

/// The photo files of one import: which are written, and which nobody needs any more. A file that the store names is
/// never written over, so that undoing the import undoes its photos too.
class ImportPhotos
{
public:
    ImportPhotos(const KeepPhoto &keep, const QString &directory);

    enum Result { Same, Replaced, NotKept, NoImage };
    /// Makes the contact's photo the image of the item. Same: it was, or there is neither, or the photo is one that no
    /// export can carry. NotKept, for want of room, and NoImage, as it is no base64 or too large: it is the old one.
    Result apply(const ImpExp_Item &item, Contact &contact);

    /// Nobody names it from now on; one that is not a file of our own stays.
    void drop(const QString &photo);

    /// Files to remove when all was written, or when all was undone.
    const QStringList &dropped() const { return m_dropped; }
    const QStringList &written() const { return m_written; }

private:
    static std::optional<QByteArray> imageOf(const ImpExp_Item &item);
    Result clear(Contact &contact) const;
    bool isOwn(const QString &photo) const;

    const KeepPhoto &m_keep;
    QString m_prefix;
    QStringList m_dropped;
    QStringList m_written;
};
