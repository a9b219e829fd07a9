// SPDX-License-Identifier: Apache-2.0
#include "src/dao/IndexRepair.h"

#include "src/dao/Connection.h"
#include "src/dao/Transaction.h"

#include <QSqlError>
#include <QStringList>

#include <sqlite3.h>

#include <algorithm>

namespace {

/// A line of the check that tells of no damage: its heading, and a page that was left behind.
bool isHarmless(const QString &line)
{
    return line.isEmpty() || line == QLatin1String("ok") || line.startsWith(QLatin1String("*** in database ")) ||
           line.endsWith(QLatin1String(" is never used"));
}

bool executeAll(Connection &connection, const QStringList &statements)
{
    return std::all_of(statements.cbegin(), statements.cend(),
                       [&connection](const QString &text) { return connection.executeQuery(text).isActive(); });
}

std::optional<QStringList> indexTexts(Connection &connection)
{
    QSqlQuery query =
        connection.executeQuery(QStringLiteral("SELECT sql FROM sqlite_master WHERE type='index' AND sql IS NOT NULL"));
    QStringList texts;
    while (query.next())
        texts.append(query.value(0).toString());
    return query.lastError().isValid() ? std::nullopt : std::optional(texts);
}

/// As long as it lives the list of the tables and indexes can be written like a table.
class OpenSchema
{
public:
    explicit OpenSchema(sqlite3 *database)
        : m_database(database)
    {
        sqlite3_db_config(m_database, SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
        sqlite3_db_config(m_database, SQLITE_DBCONFIG_WRITABLE_SCHEMA, 1, nullptr);
    }
    ~OpenSchema()
    {
        sqlite3_db_config(m_database, SQLITE_DBCONFIG_WRITABLE_SCHEMA, 0, nullptr);
        sqlite3_db_config(m_database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    }
    OpenSchema(const OpenSchema &) = delete;
    OpenSchema &operator=(const OpenSchema &) = delete;

private:
    sqlite3 *m_database;
};

bool forget(Connection &connection)
{
    const OpenSchema open(connection.database());
    return executeAll(connection, {QStringLiteral("DELETE FROM sqlite_master WHERE type='index' AND sql IS NOT NULL"),
                                   QStringLiteral("PRAGMA writable_schema=RESET")});
}

/// Succeeds where the pages of the damaged index can still be followed to be freed.
bool reindex(Connection &connection)
{
    Transaction transaction(connection);
    return transaction.isActive() && executeAll(connection, {QStringLiteral("REINDEX")}) &&
           IndexRepair::isSound(connection).value_or(false) && transaction.commit();
}

/// Touches no page of the indexes that were.
bool replace(Connection &connection)
{
    Transaction transaction(connection);
    const auto texts = indexTexts(connection);
    return transaction.isActive() && texts && forget(connection) && executeAll(connection, *texts) &&
           IndexRepair::isSound(connection).value_or(false) && transaction.commit();
}

} // namespace

std::optional<bool> IndexRepair::isSound(Connection &connection)
{
    QSqlQuery query = connection.executeQuery(QStringLiteral("PRAGMA quick_check"));
    QStringList lines;
    while (query.next())
        lines += query.value(0).toString().split(QLatin1Char('\n'));
    const QString code = query.lastError().nativeErrorCode();
    if (!code.isEmpty())
        return (code.toInt() & 0xff) == SQLITE_CORRUPT ? std::optional(false) : std::nullopt;
    return std::all_of(lines.cbegin(), lines.cend(), isHarmless);
}

bool IndexRepair::makeAnew(Connection &connection)
{
    return reindex(connection) || replace(connection); // not in one transaction: SQLite refuses the second then
}
