// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What an export and an import cannot do without: bare SQLite and an XML writer or reader, nothing else. A failure is
/// a BenchError; the answers are nanoseconds.
namespace BareSync {

/// Reads the local contacts and their misc pairs of a database that others may have open, and writes them into a file
/// that is on disk afterwards.
qint64 exportTo(const QString &database, const QString &path);

/// Reads a file and inserts its contacts into a database of the service's schema that nobody else has open, in one
/// durable transaction.
qint64 importFrom(const QString &path, const QString &database, int contacts);

} // namespace BareSync
