// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/ContactPhoto.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/RegularFile.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

const QList<QByteArray> formats{"jpeg", "png", "gif", "bmp", "webp"};
constexpr qint64 largestFile = 10LL << 20;
constexpr qint64 mostPixels = 50000000;

QImage rounded(const QImage &picture, int side)
{
    QImage round(side, side, QImage::Format_ARGB32_Premultiplied);
    round.fill(Qt::transparent);
    QPainter painter(&round);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath circle;
    circle.addEllipse(round.rect());
    painter.setClipPath(circle);
    painter.drawImage(0, 0, picture);
    painter.end();
    return round.copy(); // without what has painted it, which is larger
}

} // namespace

ContactPhoto::ContactPhoto()
    : QQuickImageProvider(Image, ForceAsynchronousImageLoading)
{
    constexpr int largestMiB = 128;
    QImageReader::setAllocationLimit(largestMiB);
}

QUrl ContactPhoto::imageUrl(const QString &path)
{
    if (!path.startsWith(QLatin1Char('/')))
        return {};
    // The file may be another one under the same name: the time makes it another picture for the cache.
    const qint64 time = QFileInfo(path).lastModified().toMSecsSinceEpoch();
    return QUrl(
        QStringLiteral("image://%1/%2/%3")
            .arg(QLatin1String(provider), QString::number(time), QString::fromLatin1(QUrl::toPercentEncoding(path))));
}

QImage ContactPhoto::requestImage(const QString &id, QSize *size, const QSize &wanted)
{
    const QString path = QUrl::fromPercentEncoding(id.section(QLatin1Char('/'), 1).toLatin1());
    QFile file(path);
    if (const std::optional<QString> reason = RegularFile::open(file)) {
        KestinLogger::warning("The photo %1 is not shown: %2", path, *reason);
        return {};
    }
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize whole = reader.size();
    if (!formats.contains(reader.format()) || !whole.isValid() || file.size() > largestFile ||
        qint64(whole.width()) * whole.height() > mostPixels) {
        KestinLogger::warning("The photo %1 is not shown: it is no picture, or too large", path);
        return {};
    }
    const int side = wanted.width() > 0 ? wanted.width() : 100;
    QRect square(QPoint(), QSize(1, 1) * std::min(whole.width(), whole.height()));
    square.moveCenter(QRect(QPoint(), whole).center());
    reader.setClipRect(square); // before it is scaled: a thin picture would have a long side without end
    reader.setScaledSize(QSize(side, side));
    const QImage picture = reader.read();
    if (picture.isNull())
        return {};
    *size = QSize(side, side);
    return rounded(picture, side);
}
