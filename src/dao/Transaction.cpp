// SPDX-License-Identifier: Apache-2.0
#include "src/dao/Transaction.h"

#include "src/dao/Connection.h"

Transaction::Transaction(Connection &connection)
    : m_connection(connection)
    , m_outermost(connection.m_depth == 0)
    , m_active(begin())
{
    if (m_active)
        ++m_connection.m_depth;
}

Transaction::~Transaction()
{
    if (m_active)
        rollBack();
}

bool Transaction::commit()
{
    if (!m_active)
        return false;
    if (!end()) {
        rollBack();
        return false;
    }
    m_active = false;
    --m_connection.m_depth;
    return true;
}

bool Transaction::begin()
{
    if (m_connection.m_lost)
        return false;
    Statement &statement = m_outermost ? m_connection.m_transaction.begin : m_connection.m_transaction.save;
    return statement.use().execute() == 0;
}

bool Transaction::end()
{
    if (m_connection.m_lost)
        return false;
    Statement &statement = m_outermost ? m_connection.m_transaction.commit : m_connection.m_transaction.release;
    return statement.use().execute() == 0;
}

void Transaction::rollBack()
{
    m_active = false;
    --m_connection.m_depth;
    m_connection.beginEpoch();
    if (m_outermost) {
        // After some failures (a full disk) the database has rolled back by itself; this then fails, as it may.
        QSqlQuery(m_connection.m_handle).exec(QStringLiteral("ROLLBACK"));
        m_connection.m_lost = false;
        return;
    }
    if (m_connection.m_lost)
        return;
    const bool rolledBack = m_connection.m_transaction.rollBackToSaved.use().execute() == 0 &&
                            m_connection.m_transaction.release.use().execute() == 0;
    // Without its savepoint the outer transaction is gone as well, and each further write would be one of its own.
    m_connection.m_lost = !rolledBack;
}
