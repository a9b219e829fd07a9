// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QList>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/// The database of the service without the service: the same file, tables, indexes, triggers and durability, written
/// through SQLite's own interface with prepared statements. A failure is a BenchError.
class BareStore
{
public:
    /// Opens a database that the service made and nobody else has open.
    explicit BareStore(const QString &path);
    ~BareStore();

    /// Inserts the contact and its one misc pair in one durable transaction. The nanoseconds from its begin to its end;
    /// the values are made ready before.
    qint64 insert(const Contact &contact);

private:
    struct Close
    {
        void operator()(sqlite3 *database) const;
        void operator()(sqlite3_stmt *statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Close>;

    Statement prepare(const QByteArray &text);
    void run(const Statement &statement, const QList<QByteArray> &values = {});

    std::unique_ptr<sqlite3, Close> m_database;
    Statement m_begin;
    Statement m_insertContact;
    Statement m_insertPair;
    Statement m_commit;
};
