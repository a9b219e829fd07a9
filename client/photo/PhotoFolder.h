// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/SettingsService.h"
#include "client/photo/PhotoFile.h"

#include <optional>

/// The folder in which the directory keeps the photos of contacts, and into which this program puts those that it
/// brings. The directory makes the folder, and removes a photo when its contact goes.
class PhotoFolder
{
public:
    explicit PhotoFolder(const SettingsService &settings)
        : m_settings(settings)
    {
    }

    static QString path();

    /// Puts a picture there under a name of its own; it is there whole or not at all. Throws CommandFailure when it is
    /// no picture, when the photos would take more than the setting FileDiskUserQuota allows, when that cannot be
    /// asked, and when the folder cannot be written. The folder is measured at the first call, and again when it seems
    /// to be full; the setting is asked once.
    PhotoFile put(const QByteArray &picture);

private:
    void makeRoomFor(qint64 size);
    qint64 quota();

    SettingsService m_settings;
    std::optional<qint64> m_quota; ///< bytes, and so for the room
    std::optional<qint64> m_room;
    std::optional<CommandFailure> m_noQuota;
};
