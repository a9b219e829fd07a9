// SPDX-License-Identifier: Apache-2.0
#include "client/photo/PhotoFolder.h"

#include "client/photo/PictureFile.h"
#include "platform/records/DurableFile.h"
#include "platform/records/KestinPaths.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QUuid>

#include <utility>

namespace {

constexpr qint64 mebibyte = 1024 * 1024;

qint64 bytesIn(const QString &folder)
{
    qint64 bytes = 0;
    for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden))
        bytes += file.size();
    return bytes;
}

} // namespace

PhotoFile::PhotoFile(PhotoFile &&other) noexcept
    : m_path(std::exchange(other.m_path, {}))
{
}

PhotoFile &PhotoFile::operator=(PhotoFile &&other) noexcept
{
    std::swap(m_path, other.m_path);
    return *this;
}

PhotoFile::~PhotoFile()
{
    // One that cannot be removed is in nobody's way.
    if (!m_path.isEmpty())
        QFile::remove(m_path);
}

QString PhotoFolder::path()
{
    return KestinPaths::data(QStringLiteral("/data/KestinDirectory/photos/"));
}

qint64 PhotoFolder::quota()
{
    // A silent settings manager is not waited for with each of many photos.
    if (m_noQuota)
        throw CommandFailure(*m_noQuota);
    if (m_quota)
        return *m_quota;
    const QString key = QStringLiteral("FileDiskUserQuota");
    try {
        bool isNumber = false;
        m_quota = m_settings.value(key).toInt(&isNumber) * mebibyte;
        if (!isNumber)
            throw CommandFailure(ExitCode::Refused, QStringLiteral("the setting %1 holds no number").arg(key));
    } catch (const CommandFailure &failure) {
        m_noQuota = failure;
        throw;
    }
    return *m_quota;
}

void PhotoFolder::makeRoomFor(qint64 size)
{
    // Photos may have gone since the folder was measured.
    if (!m_room || size > *m_room)
        m_room = quota() - bytesIn(path());
    if (size > *m_room)
        throw CommandFailure(ExitCode::Refused,
                             QStringLiteral("there is no room for it: the photos may take %1 MiB (the setting "
                                            "FileDiskUserQuota); remove contacts with photos or raise it")
                                 .arg(quota() / mebibyte));
}

PhotoFile PhotoFolder::put(const QByteArray &picture)
{
    if (const auto fault = PictureFile::faultOf(picture))
        throw CommandFailure(ExitCode::FileError, QStringLiteral("it %1").arg(*fault));
    makeRoomFor(picture.size());
    QSaveFile file(path() + QLatin1String("photo_") + QUuid::createUuid().toString(QUuid::WithoutBraces));
    // The directory, which may be another user of the folder's group, has to read it whatever the umask here.
    constexpr auto forTheGroup = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup;
    if (file.open(QIODevice::WriteOnly) && file.setPermissions(forTheGroup))
        file.write(picture);
    if (const auto failure = DurableFile::commit(file))
        throw CommandFailure(ExitCode::FileError, QStringLiteral("%1 cannot be written: %2").arg(path(), *failure));
    *m_room -= picture.size();
    return PhotoFile(file.fileName());
}
