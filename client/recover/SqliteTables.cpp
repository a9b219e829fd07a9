// SPDX-License-Identifier: Apache-2.0
#include "client/recover/SqliteTables.h"

#include <QFileInfo>

#include <sqlite3.h>

namespace {

constexpr int stepsBetweenLooks = 1000;
constexpr qint64 mostIdleLooks = 20000;
constexpr int longestValue = 32 * 1024 * 1024;

QString listOf(const QStringList &columns)
{
    QString list = QStringLiteral("rowid");
    for (const QString &column : columns)
        list += QStringLiteral(", \"%1\"").arg(column);
    return list;
}

QString textOf(sqlite3_stmt *statement, int column)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
    return QString::fromUtf8(text, sqlite3_column_bytes(statement, column));
}

sqlite3 *opened(const QString &path)
{
    sqlite3 *database = nullptr;
    sqlite3_open_v2(QFile::encodeName(path).constData(), &database, SQLITE_OPEN_READWRITE, nullptr);
    return database;
}

/// It brings into the file what its log holds.
void close(sqlite3 *database)
{
    sqlite3_close(database);
}

} // namespace

SqliteTables::SqliteTables(const QString &path, RecoveryProgress &progress)
    : m_database(opened(path), &close)
    , m_progress(progress)
    , m_size(QFileInfo(path).size() + QFileInfo(path + QLatin1String("-wal")).size())
    , m_budget(4 * m_size)
{
    sqlite3 *const database = m_database.get();
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, longestValue);
    sqlite3_progress_handler(database, stepsBetweenLooks, &SqliteTables::onProgress, this);
    step(prepare(QStringLiteral("PRAGMA cell_size_check=ON")));
}

/// Ends a statement that goes on and on without a row.
int SqliteTables::onProgress(void *self)
{
    auto *tables = static_cast<SqliteTables *>(self);
    return ++tables->m_steps > mostIdleLooks || tables->m_progress.isInterrupted() ? 1 : 0;
}

/// None when SQLite refuses it.
SqliteTables::Statement SqliteTables::prepare(const QString &sql)
{
    sqlite3_stmt *statement = nullptr;
    m_steps = 0;
    sqlite3_prepare_v2(m_database.get(), sql.toUtf8().constData(), -1, &statement, nullptr);
    return {statement, [](sqlite3_stmt *prepared) { sqlite3_finalize(prepared); }};
}

int SqliteTables::step(const Statement &statement)
{
    m_steps = 0;
    const int code = statement ? sqlite3_step(statement.get()) : SQLITE_ERROR;
    if (m_progress.isInterrupted())
        m_progress.advance(0, 0);
    return code;
}

std::optional<StoredRow> SqliteTables::rowOf(const Statement &statement)
{
    StoredRow row{sqlite3_column_int64(statement.get(), 0), {}};
    for (int column = 1; column < sqlite3_column_count(statement.get()); ++column) {
        const QString text = textOf(statement.get(), column);
        m_budget -= text.size();
        if (m_budget < 0)
            return std::nullopt;
        row.append(text);
    }
    return row;
}

std::optional<qint64> SqliteTables::count(const QString &sql)
{
    const Statement statement = prepare(sql);
    return step(statement) == SQLITE_ROW ? std::optional<qint64>(sqlite3_column_int64(statement.get(), 0))
                                         : std::nullopt;
}

bool SqliteTables::has(const QString &table)
{
    // A virtual table has no root.
    return count(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type='table' AND rootpage>0 AND "
                                "name='%1' COLLATE NOCASE")
                     .arg(table)) == 1;
}

QStringList SqliteTables::columns(const QString &table)
{
    QStringList names;
    const Statement statement =
        prepare(QStringLiteral("SELECT cid, name FROM pragma_table_info('%1') ORDER BY cid").arg(table));
    while (step(statement) == SQLITE_ROW)
        names.append(textOf(statement.get(), 1));
    return names;
}

SqliteTables::Walk SqliteTables::walk(const QString &table, const QStringList &columns, const Take &take)
{
    const QString sql = QStringLiteral("SELECT %1 FROM %2 NOT INDEXED ORDER BY rowid").arg(listOf(columns), table);
    const Walk all;
    std::optional<qint64> last;
    const End end = follow(
        sql, take, [&last](qint64 row) { return !last || row > *last; }, last);
    if (end != End::Broken)
        return {end == End::Reached, all.after, all.before};
    const qint64 after = last.value_or(all.after);
    last.reset();
    const auto isNext = [&last, after](qint64 row) { return row > after && (!last || row < *last); };
    if (follow(sql + QLatin1String(" DESC"), take, isNext, last) != End::Broken)
        return all;
    return {false, after, last.value_or(all.before)};
}

/// Takes the rows as long as each is the `next` of the last.
SqliteTables::End SqliteTables::follow(const QString &sql, const Take &take, const std::function<bool(qint64)> &isNext,
                                       std::optional<qint64> &last)
{
    const Statement statement = prepare(sql);
    int code = SQLITE_ROW;
    while ((code = step(statement)) == SQLITE_ROW) {
        const std::optional<StoredRow> row = rowOf(statement);
        if (!row || !isNext(row->id))
            return End::Astray;
        last = row->id;
        take(*row);
    }
    return code == SQLITE_DONE ? End::Reached : End::Broken;
}

void SqliteTables::read(const QString &table, const QStringList &columns, qint64 id, const Take &take)
{
    const Statement statement =
        prepare(QStringLiteral("SELECT %1 FROM %2 WHERE rowid=%3").arg(listOf(columns), table).arg(id));
    if (step(statement) != SQLITE_ROW)
        return;
    if (const auto row = rowOf(statement))
        take(*row);
}

std::optional<QHash<qint64, QString>> SqliteTables::listed(const QString &table, const QString &index,
                                                           const QString &column)
{
    const Statement statement =
        prepare(QStringLiteral("SELECT rowid, %1 FROM %2 INDEXED BY %3 ORDER BY %1").arg(column, table, index));
    QHash<qint64, QString> rows;
    int code = SQLITE_ROW;
    constexpr int leastEntry = 4; // bytes
    while ((code = step(statement)) == SQLITE_ROW && rows.size() < m_size / leastEntry) {
        const std::optional<StoredRow> row = rowOf(statement);
        if (!row || rows.contains(row->id))
            return std::nullopt;
        rows.insert(row->id, row->values.first());
    }
    return code == SQLITE_DONE ? std::optional(rows) : std::nullopt;
}
