// SPDX-License-Identifier: Apache-2.0
#include "client/photo/PictureFile.h"

#include "client/bus/CommandFailure.h"
#include "client/photo/ImageHeader.h"

#include "platform/records/RegularFile.h"

namespace {

CommandFailure failure(const QString &path, const QString &reason)
{
    return {ExitCode::FileError, QStringLiteral("%1 %2").arg(path, reason)};
}

} // namespace

QString PictureFile::faultOf(const QByteArray &picture)
{
    if (picture.size() > largest)
        return QStringLiteral("is larger than %1 MiB").arg(largest / 1024 / 1024);
    return ImageHeader::of(picture) ? QString() : QStringLiteral("is no JPEG, PNG or GIF");
}

QByteArray PictureFile::read(const QString &path)
{
    QFile file(path);
    if (const QString reason = RegularFile::open(file); !reason.isEmpty())
        throw failure(path, QStringLiteral("cannot be read: %1").arg(reason));
    const QByteArray picture = file.read(largest + 1);
    if (file.error() != QFileDevice::NoError)
        throw failure(path, QStringLiteral("cannot be read: %1").arg(file.errorString()));
    const QString fault = faultOf(picture);
    if (!fault.isEmpty())
        throw failure(path, fault);
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
