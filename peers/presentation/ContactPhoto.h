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
    static QUrl imageUrl(const Contact &contact) { return imageUrl(contact.photo); }

    /// A null image, which leaves the initials, for a file that is not there, is no picture, or takes more than 16 MiB
    /// when it is decoded. Called by the thread of the image loader.
    QImage requestImage(const QString &id, QSize *size, const QSize &wanted) override;
};
