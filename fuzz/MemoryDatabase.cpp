// SPDX-License-Identifier: Apache-2.0
#include "fuzz/MemoryDatabase.h"

#include "fuzz/Promise.h"

#include <sqlite3.h>

namespace {

int bytesOf(const QString &text)
{
    return int(text.size() * qsizetype(sizeof(QChar)));
}

} // namespace

MemoryDatabase::MemoryDatabase()
{
    promise(sqlite3_open(":memory:", &m_database) == SQLITE_OK, "the database opens");
}

MemoryDatabase::~MemoryDatabase()
{
    sqlite3_close(m_database);
}

QStringList MemoryDatabase::run(const QString &statement, const QStringList &values)
{
    sqlite3_stmt *prepared = nullptr;
    const void *tail = nullptr;
    const int code = sqlite3_prepare16_v2(m_database, statement.utf16(), bytesOf(statement), &prepared, &tail);
    promise(code == SQLITE_OK, "the statement is one");
    promise(tail == statement.utf16() + statement.size(), "the statement is one only");
    int position = 0;
    for (const QString &value : values)
        sqlite3_bind_text16(prepared, ++position, value.utf16(), bytesOf(value), SQLITE_TRANSIENT);
    QStringList rows;
    int step = sqlite3_step(prepared);
    for (; step == SQLITE_ROW; step = sqlite3_step(prepared))
        rows.append(QString(static_cast<const QChar *>(sqlite3_column_text16(prepared, 0)),
                            sqlite3_column_bytes16(prepared, 0) / int(sizeof(QChar))));
    promise(step == SQLITE_DONE, "the statement ends");
    sqlite3_finalize(prepared);
    return rows;
}
