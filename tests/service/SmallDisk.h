// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// A file system of a few megabytes in memory, to be filled. Needs enterMountNamespace() at the start of main.
class SmallDisk
{
public:
    /// Mounts it on the folder, which must exist.
    SmallDisk(const QString &folder, int megabytes);
    ~SmallDisk();

    bool isMounted() const { return m_mounted; }
    /// Takes all the space that is left, and gives it back.
    bool fill();
    void empty();

    /// Gives the process mounts of its own. Before any thread is started; false when the kernel does not allow it.
    static bool enterMountNamespace();

private:
    QByteArray m_folder;
    bool m_mounted = false;
};
