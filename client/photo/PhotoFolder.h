// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/PeerServices.h"

#include <QString>

#include <optional>

/// A photo in the directory's folder that no contact names yet. It is removed with this object unless it is kept.
class PhotoFile
{
public:
    PhotoFile() = default; ///< none
    explicit PhotoFile(const QString &path)
        : m_path(path)
    {
    }
    PhotoFile(PhotoFile &&other) noexcept;
    PhotoFile &operator=(PhotoFile &&other) noexcept;
    PhotoFile(const PhotoFile &) = delete;
    PhotoFile &operator=(const PhotoFile &) = delete;
    ~PhotoFile();

    /// What the contact's `photo` is to hold. Empty when there is no photo.
    QString path() const { return m_path; }
    /// A contact names the photo now, so the photo is the directory's.
    void keep() { m_path.clear(); }

private:
    QString m_path;
};

/// The folder in which the directory keeps the photos of contacts. This program puts there the photos that it brings.
/// The directory makes the folder, and removes a photo when its contact goes.
class PhotoFolder
{
public:
    explicit PhotoFolder(const SettingsService &settings)
        : m_settings(settings)
    {
    }

    static QString path();

    /// Puts a picture there under a name of its own. The picture is there whole or not at all. Throws CommandFailure
    /// when it is no picture, when the photos would take more than the setting FileDiskUserQuota allows, when that
    /// setting cannot be asked, and when the folder cannot be written. The folder is measured at the first call, and
    /// again when it seems to be full. The setting is asked once.
    PhotoFile put(const QByteArray &picture);

private:
    void makeRoomFor(qint64 size);
    qint64 quota();

    SettingsService m_settings;
    std::optional<qint64> m_quota; ///< bytes, and so for the room
    std::optional<qint64> m_room;
    std::optional<CommandFailure> m_noQuota;
};
