// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The right of one process to a store: a lock on its folder, held until this object goes or the process ends, however
/// it ends. It leaves nothing behind.
class StoreLock
{
public:
    StoreLock() = default;
    ~StoreLock();
    StoreLock(const StoreLock &) = delete;
    StoreLock &operator=(const StoreLock &) = delete;

    /// Takes the lock on this folder, in the place of any that is held. Empty on success and where it is held already,
    /// otherwise why not.
    QString take(const QString &folder);

private:
    void release();

    QString m_folder;
    int m_descriptor = -1;
};
