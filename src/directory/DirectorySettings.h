// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/PlatformCalls.h"
#include "platform/records/Setting.h"
#include "src/fields/DirectoryFields.h"

/// Reads the directory's settings into the shared fields, and follows their changes.
class DirectorySettings
{
public:
    DirectorySettings(RemoteCaller &caller, DirectoryFields &fields);

    /// Capacities, word search, display mode, photo addresses. One that cannot be read is 0 or empty, the capacity for
    /// cached contacts 40.
    void readDirectory();
    /// The photo quota, a setting in MiB; left as it is when it cannot be read.
    void readPhotoQuota();

    /// These two are empty when they cannot be read.
    QString getDefaultContactsSetting();
    QString getUserPhotoSetting(bool *success);

    void dirMaxContactChanged(const Setting &setting);
    void dirSearchModeChanged(const Setting &setting);
    void removeHttpsFromPhotoUrlChanged(const Setting &setting);

private:
    void setMaxContacts(int value);
    void setDirSearchMode(int value);
    void removeHttpsFromPhotoUrl(const QString &text);

    PlatformCalls m_calls;
    DirectoryFields &m_fields;
};
