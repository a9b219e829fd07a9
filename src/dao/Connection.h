// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/dao/Statement.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

#include <optional>

/// An open connection to the database and the state of its transactions. Belongs to the thread that opened it.
class Connection
{
public:
    explicit Connection(const QSqlDatabase &handle);

    const QSqlDatabase &handle() const { return m_handle; }

    bool isInTransaction() const { return m_depth > 0; }

    /// Executes one statement; a failure is logged and shows in the query's state. Never throws.
    QSqlQuery executeQuery(const QString &sql);

private:
    friend class Transaction;

    QSqlDatabase m_handle;
    std::optional<Statement> m_begin;
    std::optional<Statement> m_commit;
    int m_depth = 0;
    bool m_lost = false; ///< the database gave up the transaction by itself; nothing may be written until it is over
};
