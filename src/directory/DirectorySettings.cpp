// SPDX-License-Identifier: Apache-2.0
#include "src/directory/DirectorySettings.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"

#include <utility>

namespace {

const QString comLogSize = QStringLiteral("ComLogSize");
const QString dirMaxContact = QStringLiteral("DirMaxContact");
const QString dirMaxWordSearch = QStringLiteral("DirMaxWordSearch");
const QString dirSearchMode = QStringLiteral("DirSearchMode");
const QString removeHttps = QStringLiteral("RemoveHttpsFromPhotoUrl");
const QString directoryDefaultContacts = QStringLiteral("DirectoryDefaultContacts");
const QString fileDiskUserQuota = QStringLiteral("FileDiskUserQuota");

} // namespace

DirectorySettings::DirectorySettings(RemoteCaller &caller, DirectoryFields &fields)
    : m_calls(caller)
    , m_fields(fields)
    , m_unread(caller)
{
    connect(&m_unread, &UnreadSettings::answered, this, &DirectorySettings::takeLate);
}

/// Nothing when it cannot be read; it is asked for again then.
std::optional<QString> DirectorySettings::read(const QString &key)
{
    std::optional<QString> value = m_calls.getStringSetting(key);
    if (!value)
        m_unread.add(key);
    return value;
}

void DirectorySettings::readDirectory()
{
    const QString usualComLogSize = QStringLiteral("40");
    m_fields.comLogSize = read(comLogSize).value_or(usualComLogSize).toInt();
    setMaxContacts(read(dirMaxContact).value_or(QString()).toInt());
    m_fields.maxWordSearch = read(dirMaxWordSearch).value_or(QString()).toInt();
    setDirSearchMode(read(dirSearchMode).value_or(QString()).toInt());
    removeHttpsFromPhotoUrl(read(removeHttps).value_or(QString()));
}

void DirectorySettings::readPhotoQuota()
{
    if (const auto quota = read(fileDiskUserQuota))
        setPhotoQuota(quota->toInt());
    else
        KestinLogger::error("KestinDirectory::init() : can't get the FileDiskUserQuota setting");
}

QString DirectorySettings::getDefaultContactsSetting()
{
    return read(directoryDefaultContacts).value_or(QString());
}

std::optional<QString> DirectorySettings::getUserPhotoSetting()
{
    return m_calls.getStringSetting(QStringLiteral("UserPhoto"));
}

void DirectorySettings::takeLate(const QString &key, const QString &value)
{
    Setting setting;
    setting.key = key;
    setting.value = value;
    if (key == comLogSize)
        m_fields.comLogSize = value.toInt();
    else if (key == dirMaxContact)
        dirMaxContactChanged(setting);
    else if (key == dirMaxWordSearch)
        m_fields.maxWordSearch = value.toInt();
    else if (key == dirSearchMode)
        dirSearchModeChanged(setting);
    else if (key == removeHttps)
        removeHttpsFromPhotoUrlChanged(setting);
    else if (key == directoryDefaultContacts && m_fields.readOnlyMode)
        m_defaultContactsWait = true;
    else if (key == directoryDefaultContacts)
        defaultContactsChanged(setting);
    else
        setPhotoQuota(value.toInt());
}

void DirectorySettings::readOnlyModeTold()
{
    if (m_fields.readOnlyMode || !std::exchange(m_defaultContactsWait, false))
        return;
    m_unread.add(directoryDefaultContacts);
    m_unread.ask();
}

void DirectorySettings::defaultContactsChanged(const Setting &setting)
{
    const bool wasUnread = m_unread.remove(directoryDefaultContacts);
    m_defaultContactsWait = m_fields.readOnlyMode && (wasUnread || m_defaultContactsWait);
    KestinLogger::info("KestinDIR::defaultContactsChanged to %1", AddressText::withoutUserInfo(setting.getValue()));
    Q_EMIT defaultContactsWanted(setting.getValue());
}

void DirectorySettings::dirMaxContactChanged(const Setting &setting)
{
    m_unread.remove(dirMaxContact);
    KestinLogger::info("KestinDIR::dirMaxContactChanged to %1", setting.getValue());
    setMaxContacts(setting.getValue().toInt());
}

void DirectorySettings::dirSearchModeChanged(const Setting &setting)
{
    m_unread.remove(dirSearchMode);
    const int value = setting.getValue().toInt();
    KestinLogger::info("KestinDIR::dirSearchModeChanged to %1", value);
    setDirSearchMode(value);
}

void DirectorySettings::removeHttpsFromPhotoUrlChanged(const Setting &setting)
{
    m_unread.remove(removeHttps);
    removeHttpsFromPhotoUrl(setting.getValue());
}

void DirectorySettings::setPhotoQuota(int value)
{
    constexpr int maximumMiB = 2047; // what the bytes of a 32-bit number hold
    m_fields.fileDiskUserQuota = qBound(0, value, maximumMiB) << 20;
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

#include "moc_DirectorySettings.cpp"
