// SPDX-License-Identifier: Apache-2.0
#pragma once

class ContactPhotos;
class QNetworkReply;
class UserPhoto;

/// Hands each finished download to whoever started it.
class PhotoDownloads
{
public:
    PhotoDownloads(ContactPhotos &contactPhotos, UserPhoto &userPhoto);

    /// The reply is deleted later, whoever takes it; null is ignored.
    void requestFinished(QNetworkReply *reply);

private:
    ContactPhotos &m_contactPhotos;
    UserPhoto &m_userPhoto;
};
