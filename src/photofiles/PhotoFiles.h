// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/fields/DirectoryFields.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <optional>

class DaoContact;

/// The photo files of contacts, "photo_*" in the photo directory, under names made here, and how much they take there.
class PhotoFiles : public QObject
{
    Q_OBJECT

public:
    PhotoFiles(DaoContact &dao, const DirectoryFields &fields);

    /// Writes the picture as it is to a new file and answers the path. Answers nothing when the picture cannot be
    /// written or is larger than PhotoRules::maxBytes (error line), or when all files of the directory would take more
    /// than `fileDiskUserQuota` with it (quotaExceeded); `leaving` bytes, of files that are about to be removed, do not
    /// count. The name of a picture that has the form of SquarePicture says so.
    std::optional<QString> keep(const QByteArray &picture, qint64 leaving = 0);
    /// Bytes that the files may still take; negative when they take more than the quota.
    qint64 room() { return m_fields.fileDiskUserQuota - total(); }

    /// Removes the file when it is a photo file of contacts and no contact names it. To be called after the commit that
    /// made it so.
    void removeIfUnused(const QString &path);

    /// Removes what an interrupted write or a lost answer left behind: files that no contact names, and unfinished
    /// ones. While nothing is under way, and no other database names any.
    void sweep();

    /// To be called after others have written or removed files in the photo directory.
    void recount() { m_total.reset(); }

    /// Writes beside and renames, so that there is the old file or the new file, whole, and on disk with its
    /// name. Where the path is a link, the link is replaced. False when it cannot be (error line).
    [[nodiscard]] static bool write(const QString &path, const QByteArray &content);

Q_SIGNALS:
    void quotaExceeded();

private:
    qint64 total();
    void remove(const QString &path);

    DaoContact &m_dao;
    const DirectoryFields &m_fields;
    /// Bytes of all files in the directory, once counted: an import keeps thousands of photos one after the other.
    std::optional<qint64> m_total;
};
