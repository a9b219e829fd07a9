// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

/// The synchronisation file as this program sees it. It is the directory that reads and writes it, perhaps as another
/// user, so whatever cannot be told here is no failure.
namespace SyncFile {

/// How many contacts stand in the file; none when it cannot be read to its end.
std::optional<int> countContacts(const QString &path);

/// Bytes in the files that belong to `path` while it is being written, whatever the unfinished one is called: those
/// in its folder whose names hold its name.
qint64 bytesWritten(const QString &path);

} // namespace SyncFile
