// SPDX-License-Identifier: Apache-2.0
#include "picture/Square.h"

#include "picture/JpegSegments.h"
#include "picture/PictureFormat.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 maxPixels = 50'000'000;
constexpr qint64 manyPixels = 1'000'000;
constexpr int decodedMiB = 96; ///< of a decoded picture, 25 megapixels; most JPEG is decoded smaller than it is
constexpr int quality = 75;
/// A progressive JPEG takes ten or so. Each goes over the whole picture anew, and can take a few bytes only.
constexpr int maxScans = 100;

QRect centredSquare(const QSize &size)
{
    const int side = std::min(size.width(), size.height());
    return {(size.width() - side) / 2, (size.height() - side) / 2, side, side};
}

/// Makes the decoder leave out detail, where it can: a half, a quarter or an eighth is what JPEG does without decoding
/// everything, and twice the final size is enough to scale from.
void decodeReduced(QImageReader &reader, const QSize &size, int sidePixels)
{
    const int shorter = std::min(size.width(), size.height());
    int divisor = 1;
    while (divisor < 8 && shorter / (2 * divisor) >= 2 * sidePixels)
        divisor *= 2;
    const auto part = [divisor](int length) { return (length + divisor - 1) / divisor; };
    reader.setScaledSize({part(size.width()), part(size.height())});
}

bool hasTooManyScans(const QByteArray &jpeg)
{
    int scans = 0;
    JpegSegments segments(jpeg);
    while (scans <= maxScans && segments.next())
        scans += segments.marker() == JpegSegments::scan;
    return scans > maxScans;
}

/// Null when it cannot be read, and the result says why; its size is set when it can.
QImage load(QImageReader &reader, int sidePixels, Square &result)
{
    const QSize stored = reader.size();
    const qint64 pixels = qint64(stored.width()) * stored.height();
    if (stored.isEmpty() || pixels > maxPixels) {
        result.trouble = stored.isEmpty() ? reader.errorString() : QStringLiteral("more than 50 megapixels");
        return {};
    }
    const bool isOnItsSide = reader.transformation() & QImageIOHandler::TransformationRotate90;
    if (pixels > manyPixels && reader.supportsOption(QImageIOHandler::ScaledSize))
        decodeReduced(reader, stored, sidePixels);
    QImage image = reader.read();
    if (image.isNull() && reader.error() != QImageReader::UnknownError)
        result.trouble = reader.errorString();
    else if (!image.isNull())
        result.size = isOnItsSide ? stored.transposed() : stored;
    return image;
}

QImage scaledSquare(QImage image, int sidePixels)
{
    // In place where it can be, and the square is a view: a large picture is held in memory only once.
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (image.isNull())
        return {};
    const QRect rect = centredSquare(image.size());
    const QImage square(image.constScanLine(rect.y()) + 4 * rect.x(), rect.width(), rect.height(), image.bytesPerLine(),
                        image.format());
    QImage scaled = square.scaled(sidePixels, sidePixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    scaled.detach(); // one that has the right size already is the view itself
    return scaled;
}

QByteArray jpegOf(const QImage &image)
{
    QByteArray jpeg;
    if (image.isNull())
        return jpeg;
    QImage opaque(image.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    QPainter(&opaque).drawImage(0, 0, image);
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    return opaque.save(&buffer, "jpg", quality) ? jpeg : QByteArray();
}

} // namespace

Square Square::of(QIODevice &picture, int sidePixels)
{
    const QByteArray format = PictureFormat::of(picture.peek(PictureFormat::headBytes));
    if (format.isNull())
        return {{}, {}, QStringLiteral("neither JPEG, PNG, GIF, BMP nor WebP")};
    if (format == "jpeg" && hasTooManyScans(picture.readAll()))
        return {{}, {}, QStringLiteral("more than %1 scans").arg(maxScans)};
    picture.seek(0);
    QImageReader::setAllocationLimit(decodedMiB);
    QImageReader reader(&picture, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    Square result;
    if (QImage image = load(reader, sidePixels, result); !image.isNull())
        result.jpeg = jpegOf(scaledSquare(std::move(image), sidePixels));
    if (result.jpeg.isNull() && result.trouble.isEmpty())
        result.trouble = QStringLiteral("it takes too much memory");
    return result;
}
