// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QQuickImageProvider>
#include <QUrl>

/// Photos as the screen shows them: round, decoded beside the frames, and no larger than they are shown.
class ContactPhoto : public QQuickImageProvider
{
public:
    ContactPhoto();

    static constexpr char provider[] = "photo";
    /// The address of a picture for Image.source. Empty for no file: a web address is still to be fetched by the
    /// directory.
    static QUrl imageUrl(const QString &path);
    /// Not for a contact of the company: no stranger says which file of the phone is opened.
    static QUrl imageUrl(const Contact &contact)
    {
        return contact.type == ContactType::Remote ? QUrl() : imageUrl(contact.photo);
    }

    /// A null image, which leaves the initials, for a file that is not there, is no JPEG, PNG, GIF, BMP or WebP, has
    /// more than 10 MiB or 50 megapixels, or takes more than 128 MiB when it is decoded. The photos that the directory
    /// has made square come from its own program; others are decoded here. Called by the thread of the image loader.
    QImage requestImage(const QString &id, QSize *size, const QSize &wanted) override;
};
