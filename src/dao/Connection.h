// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/dao/Statement.h"

#include <QList>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

#include <functional>
#include <optional>

struct sqlite3;

/// An open connection to the database and the state of its transactions. Belongs to the thread that opened it.
class Connection
{
public:
    explicit Connection(const QSqlDatabase &handle);

    /// Qt's, which opened it and closes it.
    const QSqlDatabase &handle() const { return m_handle; }
    /// SQLite's own, on which statements run; null when it could not be opened.
    sqlite3 *database() const { return m_database; }
    /// What the database says of its last failure.
    QString errorText() const;

    bool isInTransaction() const { return m_depth > 0; }

    /// Changes whenever rows may have come or gone other than through the statements that were executed: after a
    /// roll-back of writes, or when the tables were made anew. What counts rows in memory counts again then.
    quint64 epoch() const { return m_epoch; }
    void beginEpoch() { ++m_epoch; }
    /// Rows that the statements of this connection have changed so far, also those that were rolled back.
    int changes() const;

    /// A number that the file keeps for its user, 0 in a new file. Nothing when it cannot be read (logged).
    std::optional<int> userVersion();
    /// Part of the transaction that is going on. False when it fails (logged).
    [[nodiscard]] bool setUserVersion(int version);
    /// The two numbers that are used: whether the canonical numbers are those of the dialing rules, or are to be made
    /// anew.
    static constexpr int numbersUpToDate = 0;
    static constexpr int numbersStale = 1;

    /// Whether a statement may be executed: none may under a Transaction in which a statement has failed.
    bool isUsable() const { return m_failedDepth == 0; }
    /// Ends the running Transaction for the failure of a statement, or all of them when the database gave up.
    void noteFailure();

    /// A statement said that the file is damaged.
    void noteDamage();
    bool isDamaged() const { return m_isDamaged; }
    /// Is called with each damage that is noted, in the middle of the statement; at once when some was before. May be
    /// empty.
    void setDamageHandler(const std::function<void()> &handler);

    /// Executes a statement on the schema; a failure is logged and shows in the query's state. Never
    /// throws.
    QSqlQuery executeQuery(const QString &sql);

private:
    friend class Transaction;

    struct TransactionStatements
    {
        explicit TransactionStatements(Connection &connection);

        Statement begin;
        Statement commit;
        Statement rollBack;
        Statement save;
        Statement release;
        Statement rollBackToSaved;
    };

    bool hasGivenUp() const;
    QSqlDatabase m_handle;
    sqlite3 *m_database;
    TransactionStatements m_transaction;
    quint64 m_epoch = 0;
    int m_depth = 0;
    QList<std::function<void()>> m_afterCommit;
    bool m_isDamaged = false;
    std::function<void()> m_damageHandler;
    int m_failedDepth = 0; ///< of the outermost transaction in which a statement has failed; 0: none
};
