// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

struct sqlite3;

/// A database in memory that takes exactly one statement at a time, as the text of a query is meant to be. A statement
/// that is none, or more than one, breaks a promise.
class MemoryDatabase
{
public:
    MemoryDatabase();
    ~MemoryDatabase();
    MemoryDatabase(const MemoryDatabase &) = delete;
    MemoryDatabase &operator=(const MemoryDatabase &) = delete;

    /// The first column of the rows; `values` are bound to the question marks.
    QStringList run(const QString &statement, const QStringList &values = {});

private:
    sqlite3 *m_database = nullptr;
};
