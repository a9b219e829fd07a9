// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <map>
#include <optional>

class DaoContact;
class LongWork;
class PhotoNetwork;
class PhotoFiles;
class PictureProgram;
class QNetworkReply;

/// Downloads the photos of contacts that are given as web addresses: the picture becomes a file, and the contact names
/// that. A few at a time, in the order in which they were wanted. It writes behind long work that is going on. What it
/// is made with must outlive it.
class ContactPhotos : public QObject
{
    Q_OBJECT

public:
    ContactPhotos(PhotoNetwork &network, PictureProgram &pictures, DaoContact &dao, PhotoFiles &files,
                  LongWork &longWork);

    /// Downloads the photo of a contact that has just been stored with it, and gives up a download that was under way
    /// for that contact. The number of the request; 0 when `photo` is not an address to download from, or
    /// nothing can be downloaded (logged).
    quint32 want(const QString &contactId, const QString &photo);

    /// Gives up the download for a contact that is gone or has another photo: its id may come back as somebody else.
    void forget(const QString &contactId);

    /// The same for all of them: to be called after contacts were written without a word of each.
    void giveUpUnfitting();

    /// Takes a finished reply. False when it was not started here.
    bool requestFinished(QNetworkReply *reply);

    /// Photos that wait, are downloaded or made square.
    qsizetype pendingCount() const { return qsizetype(m_downloads.size()); }

Q_SIGNALS:
    /// With the contact as it is stored now.
    void contactsUpdated(const ListContact &contacts, bool onlyPhotoHasChanged);

private:
    struct Download
    {
        QString contactId;
        QString address;
        QPointer<QNetworkReply> reply; ///< null while it waits and at the end
        quint32 picture = 0;           ///< the request to make square what came
    };

    void startWaiting();
    void start(quint32 number, Download &download);
    void ended(quint32 number);
    Download take(std::map<quint32, Download>::iterator position);
    void giveUp(const QString &contactId);
    std::optional<bool> stillFits(const Download &download) const;
    void madeSquare(quint32 picture, const QByteArray &square);
    void apply(const Download &download, const QByteArray &square);

    PhotoNetwork &m_network;
    PictureProgram &m_pictures;
    DaoContact &m_dao;
    PhotoFiles &m_files;
    std::map<quint32, Download> m_downloads; ///< by request number
    QHash<QString, quint32> m_numbers;       ///< by contact id
    quint32 m_lastNumber = 0;
};
