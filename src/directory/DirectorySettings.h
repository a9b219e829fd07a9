// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/PlatformCalls.h"
#include "platform/records/Setting.h"
#include "src/directory/UnreadSettings.h"
#include "src/fields/DirectoryFields.h"

#include <QObject>

#include <optional>

/// Reads the directory's settings into the shared fields, and follows their changes. One that cannot be read at start
/// counts as 0 or empty, the capacity for cached contacts as 40; it is asked for again in the background, and what
/// comes then takes effect as a change does.
class DirectorySettings : public QObject
{
    Q_OBJECT

public:
    DirectorySettings(RemoteCaller &caller, DirectoryFields &fields);

    /// Capacities, word search, display mode, photo addresses.
    void readDirectory();
    /// The photo quota, a setting in MiB; left as it is when it cannot be read.
    void readPhotoQuota();

    /// Empty when the setting cannot be read.
    QString getDefaultContactsSetting();
    /// Nothing when the setting cannot be read.
    std::optional<QString> getUserPhotoSetting();
    /// The settings manager has come to the bus: asks for what could not be read.
    void readAgain() { m_unread.ask(); }
    /// The read-only mode may have ended: default contacts that could not be read before it are asked for again.
    void readOnlyModeTold();

    void defaultContactsChanged(const Setting &setting);
    void dirMaxContactChanged(const Setting &setting);
    void dirSearchModeChanged(const Setting &setting);
    void removeHttpsFromPhotoUrlChanged(const Setting &setting);

Q_SIGNALS:
    void defaultContactsWanted(const QString &value);

private:
    std::optional<QString> read(const QString &key);
    void takeLate(const QString &key, const QString &value);
    void setMaxContacts(int value);
    void setDirSearchMode(int value);
    void removeHttpsFromPhotoUrl(const QString &text);
    void setPhotoQuota(int value);

    PlatformCalls m_calls;
    DirectoryFields &m_fields;
    UnreadSettings m_unread;
    bool m_defaultContactsWait = false; ///< they came late and in read-only mode, which refuses them
};
