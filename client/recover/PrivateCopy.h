// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/CommandFailure.h"
#include "client/recover/RecoveryProgress.h"

#include <QFile>
#include <QTemporaryDir>

/// A database file and its journals, copied into a folder that only this user sees. What is done to the copy reaches
/// nobody else. It goes with this object.
class PrivateCopy
{
public:
    /// Throws CommandFailure when there is no such file, when it is empty, is no regular file or cannot be read, when
    /// it goes on changing, and when there is no room for the copy.
    PrivateCopy(const QString &path, RecoveryProgress &progress);

    QString path() const { return m_folder.filePath(QStringLiteral("database")); }

private:
    void copyAll(const QString &source);
    void copy(const QString &source, const QString &suffix);
    void expectRoom(qint64 size) const;
    CommandFailure writeFailure(const QString &reason) const;

    QString m_name; ///< as the user wrote it
    RecoveryProgress &m_progress;
    QTemporaryDir m_folder;
};
