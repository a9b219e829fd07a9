// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/SqliteHandles.h"

#include <QString>

/// The query of a search by name without the service: its statement on its database, opened read-only beside it and
/// run through SQLite's own interface. A failure is a BenchError.
class BareQuery
{
public:
    explicit BareQuery(const QString &path);

    /// Reads every column of the contacts whose last name begins so. The nanoseconds for it; a BenchError when they
    /// are not `hits`. `name` is ASCII.
    qint64 read(const QString &name, int hits);

private:
    SqliteHandles::Database m_database;
    SqliteHandles::Statement m_statement;
};
