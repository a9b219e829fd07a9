// SPDX-License-Identifier: Apache-2.0
#include "src/photofiles/SquarePicture.h"

#include "picture/JpegSegments.h"
#include "picture/PictureFormat.h"

#include <QtEndian>

QString SquarePicture::suffix()
{
    return QStringLiteral("_%1x%1").arg(side);
}

bool SquarePicture::isSquareJpeg(const QByteArray &picture, int sidePixels)
{
    if (PictureFormat::of(picture) != "jpeg")
        return false;
    bool isSquare = false;
    JpegSegments segments(picture);
    while (segments.next() && segments.marker() != JpegSegments::scan) {
        const QByteArrayView content = segments.content();
        if (segments.marker() == JpegSegments::application1 && content.startsWith("Exif"))
            return false;
        if (segments.marker() == JpegSegments::baselineFrame && content.size() > 5)
            isSquare = qFromBigEndian<quint16>(content.data() + 1) == sidePixels &&
                       qFromBigEndian<quint16>(content.data() + 3) == sidePixels;
    }
    return isSquare && segments.marker() == JpegSegments::scan;
}
