// SPDX-License-Identifier: Apache-2.0
#include "bench/BareStore.h"

#include "bench/BenchError.h"
#include "platform/records/Contact.h"

#include <QElapsedTimer>
#include <QFile>

namespace {

QByteArray selectText()
{
    QByteArray columns;
    for (const Contact::TextField &field : Contact::texts)
        columns += QByteArray(field.name) + ',';
    return "SELECT " + columns +
           "isPreviewed,isPrivate,type,photo,melody,puid,lastModificationDate FROM CONTACT where latinName like :name";
}

/// The stored form of an ASCII name has every letter twice.
QByteArray patternOf(const QString &name)
{
    QByteArray pattern;
    for (const char letter : name.toLower().toLatin1())
        pattern.append(2, letter);
    return pattern + '%';
}

} // namespace

BareQuery::BareQuery(const QString &path)
{
    sqlite3 *database = nullptr;
    const int opened = sqlite3_open_v2(QFile::encodeName(path).constData(), &database, SQLITE_OPEN_READONLY, nullptr);
    m_database.reset(database);
    if (opened != SQLITE_OK)
        throw BenchError(QStringLiteral("%1 cannot be opened").arg(path));
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(database, selectText().constData(), -1, &statement, nullptr) != SQLITE_OK)
        throw BenchError(QString::fromUtf8(sqlite3_errmsg(database)));
    m_statement.reset(statement);
}

qint64 BareQuery::read(const QString &name, int hits)
{
    const QByteArray pattern = patternOf(name);
    sqlite3_stmt *statement = m_statement.get();
    QElapsedTimer timer;
    timer.start();
    sqlite3_bind_text(statement, 1, pattern.constData(), int(pattern.size()), SQLITE_STATIC);
    const int columns = sqlite3_column_count(statement);
    int rows = 0;
    int code = SQLITE_ROW;
    for (; (code = sqlite3_step(statement)) == SQLITE_ROW; ++rows) {
        for (int column = 0; column < columns; ++column)
            sqlite3_column_text(statement, column);
    }
    sqlite3_reset(statement);
    const qint64 nanoseconds = timer.nsecsElapsed();
    if (code != SQLITE_DONE || rows != hits)
        throw BenchError(QStringLiteral("%1 rows begin with %2, not %3").arg(rows).arg(name).arg(hits));
    return nanoseconds;
}
