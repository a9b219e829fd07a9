// SPDX-License-Identifier: Apache-2.0
#include "src/dao/Connection.h"

#include "platform/framework/KestinLogger.h"

#include <QSqlError>

Connection::TransactionStatements::TransactionStatements(const QSqlDatabase &handle)
    : begin(handle, QStringLiteral("BEGIN TRANSACTION"))
    , commit(handle, QStringLiteral("COMMIT TRANSACTION"))
    , save(handle, QStringLiteral("SAVEPOINT nested"))
    , release(handle, QStringLiteral("RELEASE nested"))
    , rollBackToSaved(handle, QStringLiteral("ROLLBACK TO nested"))
{
}

Connection::Connection(const QSqlDatabase &handle)
    : m_handle(handle)
    , m_transaction(handle)
{
}

QSqlQuery Connection::executeQuery(const QString &sql)
{
    QSqlQuery query(m_handle);
    if (!query.exec(sql))
        KestinLogger::error("Error while executing query %1 : %2", query.lastQuery(), query.lastError().text());
    return query;
}

int Connection::userVersion()
{
    QSqlQuery query = executeQuery(QStringLiteral("PRAGMA user_version"));
    return query.next() ? query.value(0).toInt() : -1;
}

bool Connection::setUserVersion(int version)
{
    return executeQuery(QStringLiteral("PRAGMA user_version=%1").arg(version)).isActive();
}
