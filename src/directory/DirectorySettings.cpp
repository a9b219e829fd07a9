// SPDX-License-Identifier: Apache-2.0
#include "src/directory/DirectorySettings.h"

#include "platform/framework/KestinLogger.h"

DirectorySettings::DirectorySettings(RemoteCaller &caller, DirectoryFields &fields)
    : m_calls(caller)
    , m_fields(fields)
{
}

void DirectorySettings::readDirectory()
{
    constexpr int usualComLogSize = 40;
    bool success = false;
    const int comLogSize = m_calls.getIntSetting(QStringLiteral("ComLogSize"), &success);
    m_fields.comLogSize = success ? comLogSize : usualComLogSize;
    setMaxContacts(m_calls.getIntSetting(QStringLiteral("DirMaxContact")));
    m_fields.maxWordSearch = m_calls.getIntSetting(QStringLiteral("DirMaxWordSearch"));
    setDirSearchMode(m_calls.getIntSetting(QStringLiteral("DirSearchMode")));
    removeHttpsFromPhotoUrl(m_calls.getStringSetting(QStringLiteral("RemoveHttpsFromPhotoUrl")));
}

void DirectorySettings::readPhotoQuota()
{
    constexpr int maximumMiB = 2047; // what the bytes of a 32-bit number hold
    bool success = false;
    const int quota = m_calls.getIntSetting(QStringLiteral("FileDiskUserQuota"), &success);
    if (success)
        m_fields.fileDiskUserQuota = qBound(0, quota, maximumMiB) << 20;
    else
        KestinLogger::error("KestinDirectory::init() : can't get the FileDiskUserQuota setting");
}

QString DirectorySettings::getDefaultContactsSetting()
{
    return m_calls.getStringSetting(QStringLiteral("DirectoryDefaultContacts"));
}

QString DirectorySettings::getUserPhotoSetting(bool *success)
{
    return m_calls.getStringSetting(QStringLiteral("UserPhoto"), success);
}

void DirectorySettings::dirMaxContactChanged(const Setting &setting)
{
    KestinLogger::info("KestinDIR::dirMaxContactChanged to %1", setting.getValue());
    setMaxContacts(setting.getValue().toInt());
}

void DirectorySettings::dirSearchModeChanged(const Setting &setting)
{
    const int value = setting.getValue().toInt();
    KestinLogger::info("KestinDIR::dirSearchModeChanged to %1", value);
    setDirSearchMode(value);
}

void DirectorySettings::removeHttpsFromPhotoUrlChanged(const Setting &setting)
{
    removeHttpsFromPhotoUrl(setting.getValue());
}

void DirectorySettings::setMaxContacts(int value)
{
    m_fields.maxContacts = value;
    m_fields.maxContactsChanged = true;
}

void DirectorySettings::setDirSearchMode(int value)
{
    if (value == DirectoryFields::perDirectory) {
        m_fields.searchMode = DirectoryFields::perDirectory;
        KestinLogger::debug("KestinDirectory::setDirSearchMode: SEARCH_DISPLAY_PER_DIRECTORY");
    } else {
        m_fields.searchMode = DirectoryFields::fullList;
        KestinLogger::debug("KestinDirectory::setDirSearchMode: SEARCH_DISPLAY_FULL_LIST");
    }
}

void DirectorySettings::removeHttpsFromPhotoUrl(const QString &text)
{
    m_fields.removeHttpsFromPhotoUrl = text == QLatin1String("true");
    KestinLogger::debug("removeHttpsFromPhotoUrl = %1", int(m_fields.removeHttpsFromPhotoUrl));
}
