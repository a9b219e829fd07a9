// SPDX-License-Identifier: Apache-2.0
#include "src/dao/WorkerDatabase.h"

#include <QUuid>

WorkerDatabase::WorkerDatabase()
    : m_name(QUuid::createUuid().toString())
{
    QSqlDatabase handle = QSqlDatabase::cloneDatabase(QLatin1String(QSqlDatabase::defaultConnection), m_name);
    handle.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    handle.open(); // one that cannot be opened fails, and logs, at each query
    m_connection.emplace(handle);
    m_contacts.emplace(*m_connection);
}

WorkerDatabase::~WorkerDatabase()
{
    m_contacts.reset();
    m_connection.reset();
    QSqlDatabase::removeDatabase(m_name);
}
