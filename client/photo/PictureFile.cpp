// SPDX-License-Identifier: Apache-2.0
#include "client/photo/PictureFile.h"

#include "client/bus/CommandFailure.h"
#include "platform/records/RegularFile.h"

#include <QtEndian>

namespace {

template <typename Number>
int bigEndian(const QByteArray &bytes, qsizetype place)
{
    const bool isInside = place + qsizetype(sizeof(Number)) <= bytes.size();
    return isInside ? int(qFromBigEndian<Number>(bytes.constData() + place)) : 0;
}

int littleEndian16(const QByteArray &bytes, qsizetype place)
{
    return place + 2 <= bytes.size() ? qFromLittleEndian<quint16>(bytes.constData() + place) : 0;
}

/// Whether the marker opens the segment that holds the size: one of the frame headers, C0 to CF, which also has
/// tables (C4, C8, CC) among it.
bool isFrame(uchar marker)
{
    return marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
}

ImageHeader jpeg(const QByteArray &bytes)
{
    constexpr uchar markerStart = 0xff;
    qsizetype place = 2;
    while (place + 4 <= bytes.size() && uchar(bytes.at(place)) == markerStart) {
        const auto marker = uchar(bytes.at(place + 1));
        if (isFrame(marker))
            return {"JPEG", bigEndian<quint16>(bytes, place + 7), bigEndian<quint16>(bytes, place + 5)};
        // Markers may be preceded by any number of fill bytes.
        place += marker == markerStart ? 1 : 2 + bigEndian<quint16>(bytes, place + 2);
    }
    return {"JPEG"};
}

CommandFailure failure(const QString &path, const QString &reason)
{
    return {ExitCode::FileError, QStringLiteral("%1 %2").arg(path, reason)};
}

} // namespace

std::optional<ImageHeader> ImageHeader::of(const QByteArray &bytes)
{
    if (bytes.startsWith("\xff\xd8\xff"))
        return jpeg(bytes);
    if (bytes.startsWith("\x89PNG\r\n\x1a\n"))
        return ImageHeader{"PNG", bigEndian<quint32>(bytes, 16), bigEndian<quint32>(bytes, 20)};
    if (bytes.startsWith("GIF87a") || bytes.startsWith("GIF89a"))
        return ImageHeader{"GIF", littleEndian16(bytes, 6), littleEndian16(bytes, 8)};
    return std::nullopt;
}

std::optional<QString> PictureFile::faultOf(const QByteArray &picture)
{
    if (picture.size() > largest)
        return QStringLiteral("is larger than %1 MiB").arg(largest / 1024 / 1024);
    if (!ImageHeader::of(picture))
        return QStringLiteral("is no JPEG, PNG or GIF");
    return std::nullopt;
}

QByteArray PictureFile::read(const QString &path)
{
    QFile file(path);
    if (const auto reason = RegularFile::open(file))
        throw failure(path, QStringLiteral("cannot be read: %1").arg(*reason));
    const QByteArray picture = file.read(largest + 1);
    if (file.error() != QFileDevice::NoError)
        throw failure(path, QStringLiteral("cannot be read: %1").arg(file.errorString()));
    if (const auto fault = faultOf(picture))
        throw failure(path, *fault);
    return picture;
}

std::optional<PictureFile::Size> PictureFile::sizeOf(const QString &path)
{
    try {
        const QByteArray picture = read(path);
        const ImageHeader header = *ImageHeader::of(picture);
        return Size{header.width, header.height, picture.size()};
    } catch (const CommandFailure &) {
        return std::nullopt;
    }
}
