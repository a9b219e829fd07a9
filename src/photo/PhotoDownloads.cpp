// SPDX-License-Identifier: Apache-2.0
#include "src/photo/PhotoDownloads.h"

#include "src/photo/ContactPhotos.h"
#include "src/photo/UserPhoto.h"

#include <QNetworkReply>

PhotoDownloads::PhotoDownloads(ContactPhotos &contactPhotos, UserPhoto &userPhoto)
    : m_contactPhotos(contactPhotos)
    , m_userPhoto(userPhoto)
{
}

void PhotoDownloads::requestFinished(QNetworkReply *reply)
{
    if (!reply)
        return;
    if (!m_contactPhotos.requestFinished(reply))
        m_userPhoto.requestFinished(reply); // neither: it was given up meanwhile
    reply->deleteLater();
}
