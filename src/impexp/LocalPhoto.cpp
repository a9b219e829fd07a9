// SPDX-License-Identifier: Apache-2.0
#include "src/impexp/LocalPhoto.h"

#include "platform/records/RegularFile.h"

bool LocalPhoto::isLocal(const QString &photo)
{
    return !photo.isEmpty() && !photo.startsWith(QLatin1String("http:"), Qt::CaseInsensitive) &&
           !photo.startsWith(QLatin1String("https:"), Qt::CaseInsensitive);
}

std::optional<QByteArray> LocalPhoto::read(const QString &photo)
{
    QFile file(photo);
    if (!isLocal(photo) || RegularFile::open(file))
        return std::nullopt;
    QByteArray image = file.read(maxBytes + 1);
    if (file.error() != QFile::NoError || image.size() > maxBytes)
        return std::nullopt;
    return image;
}
