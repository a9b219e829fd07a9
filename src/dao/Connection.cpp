// SPDX-License-Identifier: Apache-2.0
#include "src/dao/Connection.h"

#include "platform/framework/KestinLogger.h"

#include <QSqlError>

Connection::Connection(const QSqlDatabase &handle)
    : m_handle(handle)
{
}

QSqlQuery Connection::executeQuery(const QString &sql)
{
    QSqlQuery query(m_handle);
    if (!query.exec(sql))
        KestinLogger::error("Error while executing query %1 : %2", query.lastQuery(), query.lastError().text());
    return query;
}
