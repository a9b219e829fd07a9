// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The right of one process to a store: a lock on a file beside it, held until this object goes or the process ends,
/// however it ends. The file stays; it says nothing by itself.
class StoreLock
{
public:
    StoreLock() = default;
    ~StoreLock();
    StoreLock(const StoreLock &) = delete;
    StoreLock &operator=(const StoreLock &) = delete;

    /// Takes the lock on this file, in the place of any that is held. Empty on success and where it is held already,
    /// otherwise why not.
    QString take(const QString &path);

private:
    void release();

    QString m_path;
    int m_descriptor = -1;
};
