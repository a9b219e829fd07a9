// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/ContactPhoto.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>

ContactPhoto::ContactPhoto()
    : QQuickImageProvider(Image, ForceAsynchronousImageLoading)
{
    constexpr int largestMiB = 16;
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
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize whole = reader.size();
    const int side = wanted.width() > 0 ? wanted.width() : 100;
    if (whole.isValid())
        reader.setScaledSize(whole.scaled(side, side, Qt::KeepAspectRatioByExpanding));
    const QImage picture = reader.read();
    if (picture.isNull())
        return {};
    QImage round(side, side, QImage::Format_ARGB32_Premultiplied);
    round.fill(Qt::transparent);
    QPainter painter(&round);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath circle;
    circle.addEllipse(round.rect());
    painter.setClipPath(circle);
    painter.drawImage((side - picture.width()) / 2, (side - picture.height()) / 2, picture);
    *size = round.size();
    return round;
}
