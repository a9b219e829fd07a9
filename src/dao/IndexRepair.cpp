// SPDX-License-Identifier: Apache-2.0
#include "src/dao/IndexRepair.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/Connection.h"
#include "src/dao/Transaction.h"

#include <QSqlError>
#include <QStringList>

#include <sqlite3.h>

#include <algorithm>

using IndexRepair::Outcome;

namespace {

/// A line of the check that tells of no damage: its heading, and a page that was left behind.
bool isHarmless(const QString &line)
{
    return line.isEmpty() || line == QLatin1String("ok") || line.startsWith(QLatin1String("*** in database ")) ||
           line.endsWith(QLatin1String(" is never used"));
}

bool isDamage(const QSqlError &error)
{
    return (error.nativeErrorCode().toInt() & 0xff) == SQLITE_CORRUPT;
}

Outcome executeAll(Connection &connection, const QStringList &statements)
{
    for (const QString &text : statements) {
        const QSqlQuery query = connection.executeQuery(text);
        if (!query.isActive())
            return isDamage(query.lastError()) ? Outcome::Damaged : Outcome::NotNow;
    }
    return Outcome::Done;
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

Outcome forget(Connection &connection)
{
    const OpenSchema open(connection.database());
    return executeAll(connection, {QStringLiteral("DELETE FROM sqlite_master WHERE type='index' AND sql IS NOT NULL"),
                                   QStringLiteral("PRAGMA writable_schema=RESET")});
}

Outcome commitSound(Connection &connection, Transaction &transaction)
{
    const std::optional<bool> isSound = IndexRepair::isSound(connection);
    if (isSound && !*isSound)
        return Outcome::Damaged;
    return isSound && transaction.commit() ? Outcome::Done : Outcome::NotNow;
}

/// Succeeds where the pages of the damaged index can still be followed to be freed.
Outcome reindex(Connection &connection)
{
    Transaction transaction(connection);
    const Outcome outcome = executeAll(connection, {QStringLiteral("REINDEX")});
    return outcome == Outcome::Done ? commitSound(connection, transaction) : outcome;
}

/// Touches no page of the indexes that were.
Outcome replace(Connection &connection)
{
    Transaction transaction(connection);
    const auto texts = indexTexts(connection);
    Outcome outcome = texts ? forget(connection) : Outcome::Damaged;
    if (outcome == Outcome::Done)
        outcome = executeAll(connection, *texts);
    return outcome == Outcome::Done ? commitSound(connection, transaction) : outcome;
}

std::optional<bool> isWithoutFault(Connection &connection, const QString &check)
{
    QSqlQuery query(connection.handle());
    query.exec(check);
    QStringList lines;
    while (query.next())
        lines += query.value(0).toString().split(QLatin1Char('\n'));
    const QSqlError error = query.lastError();
    if (!error.isValid())
        return std::all_of(lines.cbegin(), lines.cend(), isHarmless);
    if (isDamage(error))
        return false;
    if (error.nativeErrorCode().toInt() != SQLITE_INTERRUPT)
        KestinLogger::error("Error while executing query %1 : %2", check, error.text());
    return std::nullopt;
}

} // namespace

std::optional<bool> IndexRepair::isSound(Connection &connection)
{
    return isWithoutFault(connection, QStringLiteral("PRAGMA quick_check"));
}

std::optional<bool> IndexRepair::isConsistent(Connection &connection)
{
    return isWithoutFault(connection, QStringLiteral("PRAGMA integrity_check"));
}

IndexRepair::Outcome IndexRepair::makeAnew(Connection &connection)
{
    const Outcome outcome = reindex(connection);
    // Not in one transaction: SQLite refuses the second then.
    return outcome == Outcome::Damaged ? replace(connection) : outcome;
}
