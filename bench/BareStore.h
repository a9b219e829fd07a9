// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QList>
#include <QString>

#include <memory>

#include <sqlite3.h>

/// Owners of what SQLite's own interface opens and prepares.
namespace SqliteHandles {

struct Close
{
    void operator()(sqlite3 *database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, Close>;
using Statement = std::unique_ptr<sqlite3_stmt, Close>;

} // namespace SqliteHandles

/// The database of the service without the service: the same file, tables, indexes, triggers and durability, written
/// through SQLite's own interface with prepared statements. A failure is a BenchError.
class BareStore
{
public:
    /// Opens a database that the service made and nobody else has open.
    explicit BareStore(const QString &path);

    /// Inserts the contact and its misc pair in a durable transaction. The nanoseconds from its begin to its end. The
    /// values are made ready before.
    qint64 insert(const Contact &contact);

    /// The same for many contacts in a single transaction. A contact may have a misc pair or none.
    void begin() { run(m_begin); }
    void add(const Contact &contact);
    void commit() { run(m_commit); }

private:
    using Statement = SqliteHandles::Statement;

    struct Row
    {
        QList<QByteArray> values;
        QByteArray key; ///< of the misc pair; empty when there is none
        QByteArray pair;
    };
    static Row rowOf(const Contact &contact);
    void add(const Row &row);
    Statement prepare(const QByteArray &text);
    void run(const Statement &statement, const QList<QByteArray> &values = {});

    SqliteHandles::Database m_database;
    Statement m_begin;
    Statement m_insertContact;
    Statement m_insertPair;
    Statement m_commit;
};

/// The query of a search by name without the service: its statement on its database, opened read-only beside it and
/// run through SQLite's own interface. A failure is a BenchError.
class BareQuery
{
public:
    explicit BareQuery(const QString &path);

    /// Reads every column of the contacts whose last name begins so. The nanoseconds for it. A BenchError when the
    /// contacts are not `hits` many. `name` is ASCII.
    qint64 read(const QString &name, int hits);

private:
    SqliteHandles::Database m_database;
    SqliteHandles::Statement m_statement;
};

/// What an export and an import cannot do without: bare SQLite and an XML writer or reader, nothing else. A failure is
/// a BenchError. The answers are nanoseconds.
namespace BareSync {

/// Reads the local contacts and their misc pairs of a database that others may have open, and writes them into a file
/// that is on disk afterwards.
qint64 exportTo(const QString &database, const QString &path);

/// Reads a file and inserts its contacts in a single durable transaction. The database has the service's schema, and
/// nobody else has it open.
qint64 importFrom(const QString &path, const QString &database, int contacts);

} // namespace BareSync
