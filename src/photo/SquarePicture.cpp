// SPDX-License-Identifier: Apache-2.0
#include "src/photo/SquarePicture.h"

#include "platform/framework/KestinLogger.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 maxPixels = 50'000'000;
constexpr qint64 manyPixels = 1'000'000;
constexpr int quality = 75;

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

/// Null when it cannot be read; `size` is that of the upright picture.
QImage load(QIODevice &picture, int sidePixels, QSize &size)
{
    QImageReader reader(&picture);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize stored = reader.size();
    const qint64 pixels = qint64(stored.width()) * stored.height();
    if (stored.isEmpty() || pixels > maxPixels)
        return {};
    const bool isOnItsSide = reader.transformation() & QImageIOHandler::TransformationRotate90;
    if (pixels > manyPixels && reader.supportsOption(QImageIOHandler::ScaledSize))
        decodeReduced(reader, stored, sidePixels);
    QImage image = reader.read();
    if (!image.isNull())
        size = isOnItsSide ? stored.transposed() : stored;
    return image;
}

QImage scaledSquare(QImage image, int sidePixels)
{
    if (image.isNull())
        return {};
    // In place where it can be, and the square is a view: a large picture is held in memory only once.
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    const QRect rect = centredSquare(image.size());
    const QImage square(image.constScanLine(rect.y()) + 4 * rect.x(), rect.width(), rect.height(), image.bytesPerLine(),
                        image.format());
    return square.scaled(sidePixels, sidePixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
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

QString SquarePicture::suffix()
{
    return QStringLiteral("_%1x%1").arg(side);
}

bool SquarePicture::isSquareJpeg(const QByteArray &picture)
{
    QBuffer buffer;
    buffer.setData(picture);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    return reader.format() == "jpeg" && reader.size() == QSize(side, side) &&
           reader.transformation() == QImageIOHandler::TransformationNone;
}

QByteArray SquarePicture::make(QIODevice *picture, const QString &name, int sidePixels)
{
    QSize size(0, 0);
    QImage image = picture ? load(*picture, sidePixels, size) : QImage();
    if (image.isNull())
        KestinLogger::error("KestinDirectory::resizeAndCropToSquare, failed to load image: %1", name);
    else
        KestinLogger::debug("KestinDirectory::resizeAndCropToSquare, successfully loaded image: %1", name);
    KestinLogger::debug("KestinDirectory::resizeAndCropToSquare, size of image is: %1 x %2", size.width(),
                        size.height());
    const QImage square = scaledSquare(std::move(image), sidePixels);
    KestinLogger::debug("KestinDirectory::resizeAndCropToSquare, about to write new image with size: %1 x %2",
                        square.width(), square.height());
    return jpegOf(square);
}
