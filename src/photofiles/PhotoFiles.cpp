// SPDX-License-Identifier: Apache-2.0
#include "src/photofiles/PhotoFiles.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/DurableFile.h"
#include "src/dao/DaoContact.h"
#include "src/fields/PhotoRules.h"
#include "src/photofiles/SquarePicture.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSaveFile>
#include <QUuid>

PhotoFiles::PhotoFiles(DaoContact &dao, const DirectoryFields &fields)
    : m_dao(dao)
    , m_fields(fields)
{
}

std::optional<QString> PhotoFiles::keep(const QByteArray &picture, qint64 leaving)
{
    if (picture.size() > PhotoRules::maxBytes) {
        KestinLogger::error("A photo of %1 bytes is not kept, it is too large", picture.size());
        return std::nullopt;
    }
    if (picture.size() > room() + leaving) {
        Q_EMIT quotaExceeded();
        return std::nullopt;
    }
    QString path = m_fields.photoDirectory + PhotoRules::prefix + QUuid::createUuid().toString(QUuid::Id128);
    if (SquarePicture::isSquareJpeg(picture))
        path += SquarePicture::suffix();
    if (!write(path, picture))
        return std::nullopt;
    *m_total += picture.size();
    return path;
}

void PhotoFiles::removeIfUnused(const QString &path)
{
    if (PhotoRules::isOurs(path, m_fields.photoDirectory) && m_dao._nbContactsUsingThisPhotoQuery(path) == 0)
        remove(path);
}

void PhotoFiles::sweep()
{
    const auto photos = m_dao.getPhotos();
    if (!photos)
        return;          // logged; better too many files than too few
    QSet<QString> names; // the directory itself can be spelled in several ways
    for (const QString &photo : *photos)
        names.insert(QFileInfo(photo).fileName());
    const QDir directory(m_fields.photoDirectory);
    const QStringList ours = directory.entryList({PhotoRules::prefix + QLatin1Char('*')}, QDir::Files | QDir::System);
    for (const QString &name : ours) {
        if (!names.contains(name))
            remove(directory.filePath(name));
    }
    const QString unfinished = QStringLiteral("UserPhoto_*%1.??????").arg(SquarePicture::suffix());
    const QStringList leftOver = directory.entryList({unfinished}, QDir::Files);
    for (const QString &name : leftOver)
        remove(directory.filePath(name));
}

bool PhotoFiles::write(const QString &path, const QByteArray &content)
{
    if (QFileInfo(path).isSymLink())
        QFile::remove(path); // what it leads to is not ours to overwrite
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(content);
    const auto failure = DurableFile::commit(file);
    if (failure)
        KestinLogger::error("Photo file %1 could not be written: %2", path, *failure);
    return !failure;
}

qint64 PhotoFiles::total()
{
    if (!m_total) {
        m_total = 0;
        QDirIterator files(m_fields.photoDirectory, QDir::Files | QDir::Hidden);
        while (files.hasNext())
            *m_total += files.nextFileInfo().size();
    }
    return *m_total;
}

void PhotoFiles::remove(const QString &path)
{
    if (!QFile::remove(path))
        KestinLogger::warning("Photo file %1 could not be removed", path);
    recount(); // it may be one that was never counted
}

#include "moc_PhotoFiles.cpp"
