// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What the first bytes of a picture tell. The picture itself is not decoded: that is the phone's business.
struct ImageHeader
{
    QByteArray format; ///< "JPEG", "PNG" or "GIF"
    int width = 0;     ///< pixels; 0 when the header is cut or damaged, and so for the height
    int height = 0;

    /// None when the bytes do not begin like a JPEG, PNG or GIF.
    static std::optional<ImageHeader> of(const QByteArray &bytes);
};

/// Pictures as files of this machine.
namespace PictureFile {

/// Larger pictures are refused. The directory does not download larger pictures either.
constexpr qint64 largest = 10 * 1024 * 1024;

/// Why these bytes cannot be a contact's photo, as a sentence's end ("is no JPEG, PNG or GIF"), when they cannot.
std::optional<QString> faultOf(const QByteArray &picture);

/// The bytes of a picture. Throws CommandFailure when the path is no regular file that can be read, or no picture. A
/// pipe or a device is not opened.
QByteArray read(const QString &path);

struct Size
{
    int width = 0; ///< pixels; 0 when the file does not tell, and so for the height
    int height = 0;
    qint64 bytes = 0;
};

/// None when the path is no picture that can be read.
std::optional<Size> sizeOf(const QString &path);

} // namespace PictureFile
