// SPDX-License-Identifier: Apache-2.0
#include "src/photo/ContactPhotos.h"

#include "platform/framework/LongWork.h"
#include "src/dao/DaoContact.h"
#include "src/photo/PhotoNetwork.h"
#include "src/photofiles/PhotoAddress.h"
#include "src/photofiles/PhotoFiles.h"
#include "src/photofiles/PictureProgram.h"
#include "src/photofiles/SquarePicture.h"

#include <QNetworkReply>
#include <QUrl>

#include <algorithm>

namespace {

/// With this many at a time, what their answers take in memory is bounded; an import can want thousands.
constexpr int maxRunning = 4;
constexpr char numberProperty[] = "photoRequestNumber";

} // namespace

ContactPhotos::ContactPhotos(PhotoNetwork &network, PictureProgram &pictures, DaoContact &dao, PhotoFiles &files,
                             LongWork &longWork)
    : m_network(network)
    , m_pictures(pictures)
    , m_dao(dao)
    , m_files(files)
{
    connect(&m_pictures, &PictureProgram::answered, this, [this, &longWork](quint32 picture, const QByteArray &square) {
        longWork.after(this, [this, picture, square] { madeSquare(picture, square); });
    });
}

quint32 ContactPhotos::want(const QString &contactId, const QString &photo)
{
    forget(contactId);
    if (!PhotoAddress::isToDownload(photo) || !m_network.isReady())
        return 0;
    if (++m_lastNumber == 0)
        ++m_lastNumber;
    const quint32 number = m_lastNumber;
    m_downloads[number] = {contactId, photo, nullptr, 0};
    m_numbers[contactId] = number;
    startWaiting();
    return number;
}

void ContactPhotos::forget(const QString &contactId)
{
    giveUp(contactId);
    startWaiting();
}

void ContactPhotos::giveUpUnfitting()
{
    const QStringList contactIds = m_numbers.keys();
    for (const QString &contactId : contactIds) {
        if (!stillFits(m_downloads.at(m_numbers.value(contactId))).value_or(true))
            giveUp(contactId); // not where it cannot be known: nobody would ask again
    }
    startWaiting();
}

void ContactPhotos::giveUp(const QString &contactId)
{
    const auto position = m_downloads.find(m_numbers.value(contactId));
    if (position == m_downloads.end())
        return;
    const Download download = take(position);
    m_pictures.drop(download.picture);
    m_network.giveUp(download.reply);
}

/// Whether the contact is there and still has this photo; none when it cannot be read (logged).
std::optional<bool> ContactPhotos::stillFits(const Download &download) const
{
    const std::optional<ListContact> stored = m_dao.getContact(download.contactId);
    if (!stored)
        return std::nullopt;
    return !stored->isEmpty() && stored->first().photo == download.address;
}

void ContactPhotos::startWaiting()
{
    const auto isRunning = [](const auto &entry) { return entry.second.reply || entry.second.picture != 0; };
    auto running = std::count_if(m_downloads.cbegin(), m_downloads.cend(), isRunning);
    for (auto entry = m_downloads.begin(); entry != m_downloads.end() && running < maxRunning; ++entry) {
        if (isRunning(*entry))
            continue;
        start(entry->first, entry->second);
        ++running;
    }
}

void ContactPhotos::start(quint32 number, Download &download)
{
    download.reply = m_network.get(QUrl(download.address)); // never null: the scheme was looked at
    download.reply->setProperty(numberProperty, number);
    // A download that fails tells nobody: the end of its reply is the one thing that always comes.
    connect(download.reply, &QObject::destroyed, this, [this, number] { ended(number); });
}

void ContactPhotos::ended(quint32 number)
{
    if (const auto position = m_downloads.find(number); position != m_downloads.end() && position->second.picture == 0)
        take(position);
    startWaiting();
}

ContactPhotos::Download ContactPhotos::take(std::map<quint32, Download>::iterator position)
{
    Download download = std::move(position->second);
    m_downloads.erase(position);
    m_numbers.remove(download.contactId);
    return download;
}

bool ContactPhotos::requestFinished(QNetworkReply *reply)
{
    const quint32 number = reply->property(numberProperty).toUInt();
    if (const auto position = m_downloads.find(number); position != m_downloads.end())
        position->second.picture = m_pictures.ask({position->second.address, reply->readAll(), SquarePicture::side});
    return number != 0;
}

void ContactPhotos::madeSquare(quint32 picture, const QByteArray &square)
{
    const auto isIt = [picture](const auto &entry) { return entry.second.picture == picture; };
    const auto position = std::find_if(m_downloads.begin(), m_downloads.end(), isIt);
    if (position == m_downloads.end())
        return; // somebody else has asked
    apply(take(position), square);
    startWaiting();
}

void ContactPhotos::apply(const Download &download, const QByteArray &square)
{
    if (!stillFits(download).value_or(false))
        return;
    const auto path = square.isNull() ? std::nullopt : m_files.keep(square);
    if (!path)
        return;
    if (!m_dao.updatePhotoContact(download.contactId, *path))
        m_files.removeIfUnused(*path);
    else if (const auto updated = m_dao.getContact(download.contactId))
        Q_EMIT contactsUpdated(*updated, true);
}

#include "moc_ContactPhotos.cpp"
