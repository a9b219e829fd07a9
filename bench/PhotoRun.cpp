// SPDX-License-Identifier: Apache-2.0
#include "bench/PhotoRun.h"

#include "bench/BenchError.h"
#include "bench/Rounds.h"
#include "bench/Stand.h"
#include "platform/records/RecordMaps.h"
#include "src/photofiles/PictureProgram.h"

#include <QElapsedTimer>
#include <QImage>
#include <QRandomGenerator>

namespace {

constexpr int side = 100;

/// As hard to encode and decode as a picture with much in it.
void writePicture(const QString &path, int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    QRandomGenerator random(1);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x & 0xff, y & 0xff, int(random.bounded(64)) + ((x + y) >> 4 & 0x7f)));
    }
    if (!image.save(path, "jpg", 85))
        throw BenchError(QStringLiteral("%1 cannot be written").arg(path));
}

} // namespace

PhotoRun::PhotoRun(Stand &stand, int size)
    : m_stand(stand)
    , m_size(size)
{
}

void PhotoRun::measure(FigureTable &table)
{
    measureLargePhoto(table);
    measureStarts(table);
}

void PhotoRun::measureLargePhoto(FigureTable &table) const
{
    constexpr int times = 9;
    const QString source = m_stand.folder() + QLatin1String("/large.jpg");
    writePicture(source, 4000, 3000);
    Samples samples;
    for (int i = 0; i < times; ++i) {
        QElapsedTimer timer;
        timer.start();
        if (PictureProgram().squareOf({source, std::nullopt, side}).isNull())
            throw BenchError(QStringLiteral("a photo could not be resized"));
        samples.add(timer.nsecsElapsed());
    }
    table.put(m_size, Figure::LargePhoto, {samples.median() / 1000, {}});
}

void PhotoRun::measureStarts(FigureTable &table) const
{
    constexpr int photos = 100;
    const auto page = m_stand.client().callDirectory(QStringLiteral("getLocalContacts"), {0, photos});
    auto contacts = page.value<ListContact>();
    for (int i = 0; i < contacts.size(); ++i) {
        contacts[i].photo = m_stand.folder() + QStringLiteral("/KestinDirectory/photos/photo_bench%1").arg(i);
        writePicture(contacts.at(i).photo, 640, 480);
    }
    const auto answer = m_stand.client().callDirectory(QStringLiteral("modifyLocalContacts"),
                                                       {QStringLiteral("bench"), QVariant::fromValue(contacts)});
    if (answer.value<QMapQStringQString>().size() != photos)
        throw BenchError(QStringLiteral("contacts could not be given their photos"));
    m_stand.directory().stop();
    const double withPhotos = double(m_stand.directory().start()) / 1e6;
    const ListContact resized = m_stand.client()
                                    .callDirectory(QStringLiteral("getContactById"), {contacts.first().contactId})
                                    .value<ListContact>();
    if (!resized.value(0).photo.endsWith(QLatin1String("_100x100")))
        throw BenchError(QStringLiteral("the start did not resize the photos"));
    m_stand.directory().stop();
    table.put(m_size, Figure::StartWithPhotos, {withPhotos, {}});
    table.put(m_size, Figure::StartAfterPhotos, {double(m_stand.directory().start()) / 1e6, {}});
}
