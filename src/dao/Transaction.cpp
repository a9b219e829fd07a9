// SPDX-License-Identifier: Apache-2.0
#include "src/dao/Transaction.h"

#include "src/dao/Connection.h"

#include <utility>

Transaction::Transaction(Connection &connection)
    : m_connection(connection)
    , m_depth(connection.m_depth + 1)
    , m_changesBefore(connection.changes())
    , m_newsBefore(connection.m_afterCommit.size())
    , m_begun(begin())
    , m_open(m_begun)
{
    if (m_open)
        m_connection.m_depth = m_depth;
}

Transaction::~Transaction()
{
    if (m_open)
        rollBack();
}

bool Transaction::isActive() const
{
    return m_open && (m_connection.isUsable() || m_connection.m_failedDepth > m_depth);
}

void Transaction::afterCommit(const std::function<void()> &tell)
{
    if (m_begun)
        m_connection.m_afterCommit.append(tell);
    else if (!m_connection.isInTransaction())
        tell();
}

bool Transaction::commit()
{
    if (!m_open)
        return false;
    if (!end()) {
        rollBack();
        return false;
    }
    m_open = false;
    m_connection.m_depth = m_depth - 1;
    if (m_depth == 1)
        tellAll();
    return true;
}

void Transaction::tellAll()
{
    // Taken out first: whoever is told may write again.
    const auto news = std::exchange(m_connection.m_afterCommit, {});
    for (const auto &tell : news)
        tell();
}

bool Transaction::begin()
{
    Statement &statement = m_depth == 1 ? m_connection.m_transaction.begin : m_connection.m_transaction.save;
    return m_connection.isUsable() && statement.use().execute();
}

bool Transaction::end()
{
    Statement &statement = m_depth == 1 ? m_connection.m_transaction.commit : m_connection.m_transaction.release;
    return m_connection.isUsable() && statement.use().execute();
}

void Transaction::rollBack()
{
    m_open = false;
    m_connection.m_depth = m_depth - 1;
    m_connection.m_afterCommit.resize(m_newsBefore);
    if (m_connection.changes() != m_changesBefore)
        m_connection.beginEpoch();
    if (m_connection.m_failedDepth != 0 && m_connection.m_failedDepth < m_depth)
        return; // gone with an outer one
    m_connection.m_failedDepth = 0;
    if (m_depth > 1) {
        // Without its savepoint the outer transaction is no good either: what fails here ends that.
        (void)(m_connection.m_transaction.rollBackToSaved.use().execute() &&
               m_connection.m_transaction.release.use().execute());
    } else if (!m_connection.hasGivenUp()) {
        (void)m_connection.m_transaction.rollBack.use().execute(); // a failure is logged; nothing is left to undo with
    }
}
