// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/SqliteHandles.h"
#include "platform/records/Contact.h"

#include <QList>

/// The database of the service without the service: the same file, tables, indexes, triggers and durability, written
/// through SQLite's own interface with prepared statements. A failure is a BenchError.
class BareStore
{
public:
    /// Opens a database that the service made and nobody else has open.
    explicit BareStore(const QString &path);

    /// Inserts the contact and its one misc pair in one durable transaction. The nanoseconds from its begin to its end;
    /// the values are made ready before.
    qint64 insert(const Contact &contact);

    /// The same for many in one transaction. A contact may have no misc pair or one.
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
