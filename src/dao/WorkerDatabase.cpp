// SPDX-License-Identifier: Apache-2.0
#include "src/dao/WorkerDatabase.h"

#include "src/dao/Database.h"

#include <QUuid>

WorkerDatabase::WorkerDatabase(Access access)
    : m_name(QUuid::createUuid().toString())
{
    QSqlDatabase handle = QSqlDatabase::cloneDatabase(QLatin1String(QSqlDatabase::defaultConnection), m_name);
    if (access == Access::Read)
        handle.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    handle.open(); // one that cannot be opened fails, and logs, at each query
    if (access == Access::Write)
        Database::prepare(handle);
    m_connection.emplace(handle);
    m_contacts.emplace(*m_connection);
}

WorkerDatabase::~WorkerDatabase()
{
    m_contacts.reset();
    m_connection.reset();
    QSqlDatabase::removeDatabase(m_name);
}
