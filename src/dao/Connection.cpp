// SPDX-License-Identifier: Apache-2.0
#include "src/dao/Connection.h"

#include "platform/framework/KestinLogger.h"

#include <QSqlDriver>
#include <QSqlError>

#include <sqlite3.h>

namespace {

/// What the driver has open; null when nothing is.
sqlite3 *sqliteOf(const QSqlDatabase &handle)
{
    const QVariant value = handle.isOpen() ? handle.driver()->handle() : QVariant();
    return value.isValid() ? *static_cast<sqlite3 *const *>(value.constData()) : nullptr;
}

/// The file can be anything: its schema may neither call functions that do more than compute, nor be written as a
/// table.
void distrust(sqlite3 *database)
{
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
}

/// A plan is made once and for whatever is bound, where SQLite would make it again for each pattern that LIKE gets.
void keepPlans(sqlite3 *database)
{
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_QPSG, 1, nullptr);
}

} // namespace

Connection::TransactionStatements::TransactionStatements(Connection &connection)
    : begin(connection, QStringLiteral("BEGIN TRANSACTION"))
    , commit(connection, QStringLiteral("COMMIT TRANSACTION"))
    , rollBack(connection, QStringLiteral("ROLLBACK"))
    , save(connection, QStringLiteral("SAVEPOINT nested"))
    , release(connection, QStringLiteral("RELEASE nested"))
    , rollBackToSaved(connection, QStringLiteral("ROLLBACK TO nested"))
{
}

Connection::Connection(const QSqlDatabase &handle)
    : m_handle(handle)
    , m_database(sqliteOf(handle))
    , m_transaction(*this)
{
    if (!m_database)
        return;
    distrust(m_database);
    keepPlans(m_database);
}

QString Connection::errorText() const
{
    return m_database ? QString::fromUtf8(sqlite3_errmsg(m_database)) : QStringLiteral("the database is not open");
}

void Connection::noteFailure()
{
    if (m_depth > 0 && hasGivenUp())
        m_failedDepth = 1;
    else if (m_failedDepth == 0)
        m_failedDepth = m_depth;
}

void Connection::noteDamage()
{
    m_isDamaged = true;
    if (m_damageHandler)
        m_damageHandler();
}

void Connection::setDamageHandler(const std::function<void()> &handler)
{
    m_damageHandler = handler;
    if (m_isDamaged && m_damageHandler)
        m_damageHandler();
}

/// Whether the database has rolled back by itself, so that each further write would be one of its own.
bool Connection::hasGivenUp() const
{
    return !m_database || sqlite3_get_autocommit(m_database) != 0;
}

/// Rows written since the connection was opened.
int Connection::changes() const
{
    return m_database ? sqlite3_total_changes(m_database) : 0;
}

QSqlQuery Connection::executeQuery(const QString &sql)
{
    QSqlQuery query(m_handle);
    if (isUsable() && query.exec(sql))
        return query;
    const QString reason = isUsable() ? query.lastError().text() : Statement::refusal;
    KestinLogger::error("Error while executing query %1 : %2", sql, reason);
    noteFailure();
    return query;
}

std::optional<int> Connection::userVersion()
{
    QSqlQuery query = executeQuery(QStringLiteral("PRAGMA user_version"));
    return query.next() ? std::optional(query.value(0).toInt()) : std::nullopt;
}

bool Connection::setUserVersion(int version)
{
    return executeQuery(QStringLiteral("PRAGMA user_version=%1").arg(version)).isActive();
}
