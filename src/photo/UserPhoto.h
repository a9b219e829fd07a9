// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/fields/DirectoryFields.h"

#include <QObject>
#include <QPointer>
#include <QString>

class PhotoNetwork;
class PhotoFiles;
class PictureProgram;
class QNetworkReply;

/// The user's own photo: one file "UserPhoto_*" in the photo directory, in the form of SquarePicture. What it is made
/// with must outlive it.
class UserPhoto : public QObject
{
    Q_OBJECT

public:
    UserPhoto(PhotoNetwork &network, PictureProgram &pictures, PhotoFiles &files, const DirectoryFields &fields);

    /// Takes the setting: the path of a picture, an http or https address, or nothing, which removes the photo. The
    /// photo that is there stays until the new photo is; when that cannot be had (logged) the old photo stays for good,
    /// and is announced if it came from this same source. A photo that is there from the same address is announced at
    /// once.
    void setUserPhoto(const QString &value);

    /// Removes the photo, as an empty setting does; nothing is told when there is none.
    void remove();

    /// Takes a finished reply. False when it was not started here.
    bool requestFinished(QNetworkReply *reply);

Q_SIGNALS:
    /// Full path of the photo; empty when there is none any more.
    void userPhotoChanged(const QString &fileName);

private:
    void giveUp();
    void download(const QString &address);
    void madeSquare(quint32 picture, const QByteArray &square);
    QString store(const QByteArray &square);
    QString storedFrom(const QString &source) const;
    bool removeAllBut(const QString &path);

    PhotoNetwork &m_network;
    PictureProgram &m_pictures;
    PhotoFiles &m_files;
    const DirectoryFields &m_fields;
    quint32 m_request = 0;           ///< counts the settings taken
    QPointer<QNetworkReply> m_reply; ///< the download under way
    quint32 m_picture = 0;           ///< the request to make the photo square
    QString m_source;                ///< the setting taken: a path or an address
};
