// SPDX-License-Identifier: Apache-2.0
#include "src/photo/UserPhoto.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"
#include "src/photo/PhotoNetwork.h"
#include "src/photofiles/PhotoAddress.h"
#include "src/photofiles/PhotoFiles.h"
#include "src/photofiles/PictureProgram.h"
#include "src/photofiles/SquarePicture.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QNetworkReply>
#include <QUrl>

#include <utility>

namespace {

constexpr QLatin1String prefix("UserPhoto_");
constexpr char requestProperty[] = "userPhotoRequest";

/// Short, and the same for the same content: the name of a file says what is in it and where it came from.
QString fingerprint(const QByteArray &content)
{
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex().left(16));
}

} // namespace

UserPhoto::UserPhoto(PhotoNetwork &network, PictureProgram &pictures, PhotoFiles &files, const DirectoryFields &fields)
    : m_network(network)
    , m_pictures(pictures)
    , m_files(files)
    , m_fields(fields)
{
    connect(&m_pictures, &PictureProgram::answered, this, &UserPhoto::madeSquare);
}

void UserPhoto::setUserPhoto(const QString &value)
{
    giveUp();
    m_source = value;
    if (value.isEmpty()) {
        removeAllBut(QString());
        Q_EMIT userPhotoChanged(QString());
    } else if (PhotoAddress::isWeb(QUrl(value))) {
        download(value);
    } else {
        m_picture = m_pictures.ask({value, std::nullopt, SquarePicture::side});
    }
}

void UserPhoto::remove()
{
    giveUp();
    m_source.clear();
    if (removeAllBut(QString()))
        Q_EMIT userPhotoChanged(QString());
}

void UserPhoto::giveUp()
{
    ++m_request; // an answer that is still to come is not for the next
    m_pictures.drop(std::exchange(m_picture, 0));
    m_network.giveUp(m_reply);
}

void UserPhoto::download(const QString &address)
{
    if (!PhotoAddress::isToDownload(address)) {
        KestinLogger::warning("The user's photo is not taken from the phone itself: %1",
                              AddressText::withoutUserInfo(address));
        return;
    }
    const QString stored = storedFrom(address);
    if (!stored.isNull())
        Q_EMIT userPhotoChanged(stored);
    if (!m_network.isReady())
        return;
    m_reply = m_network.get(QUrl(address)); // never null: the scheme was looked at
    m_reply->setProperty(requestProperty, m_request);
}

bool UserPhoto::requestFinished(QNetworkReply *reply)
{
    const QVariant request = reply->property(requestProperty);
    if (request == QVariant(m_request))
        m_picture = m_pictures.ask({m_source, reply->readAll(), SquarePicture::side});
    return request.isValid();
}

void UserPhoto::madeSquare(quint32 picture, const QByteArray &square)
{
    if (picture != m_picture)
        return; // somebody else has asked
    m_picture = 0;
    const QString before = storedFrom(m_source);
    const bool isAnnounced = PhotoAddress::isWeb(QUrl(m_source)); // if it was there
    QString photo = square.isNull() ? QString() : store(square);
    if (photo.isNull())
        photo = before; // a stick that was pulled out, for one
    if (!photo.isNull() && !(isAnnounced && photo == before))
        Q_EMIT userPhotoChanged(photo);
}

/// Path of the photo, which is the only one then; null, with the previous one as it was, when it cannot be written.
QString UserPhoto::store(const QByteArray &square)
{
    const QString name = fingerprint(m_source.toUtf8()) + QLatin1Char('-') + fingerprint(square);
    const QString path = m_fields.photoDirectory + prefix + name + SquarePicture::suffix();
    if (!QFileInfo::exists(path) && !PhotoFiles::write(path, square))
        return {};
    removeAllBut(path);
    return path;
}

QString UserPhoto::storedFrom(const QString &source) const
{
    const QString pattern = prefix + fingerprint(source.toUtf8()) + QLatin1String("-*") + SquarePicture::suffix();
    const QStringList names = QDir(m_fields.photoDirectory).entryList({pattern}, QDir::Files);
    return names.isEmpty() ? QString() : m_fields.photoDirectory + names.first();
}

/// Whether there was anything to remove.
bool UserPhoto::removeAllBut(const QString &path)
{
    QDir directory(m_fields.photoDirectory);
    const QStringList names = directory.entryList({prefix + QLatin1Char('*')}, QDir::Files);
    bool isAnyRemoved = false;
    for (const QString &name : names) {
        if (directory.filePath(name) == path)
            continue;
        isAnyRemoved = true;
        if (!directory.remove(name))
            KestinLogger::warning("Photo file %1 could not be removed", directory.filePath(name));
    }
    m_files.recount();
    return isAnyRemoved;
}

#include "moc_UserPhoto.cpp"
