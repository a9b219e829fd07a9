// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <functional>

class Connection;

/// Groups writes: all of them happen, or none. Rolls back unless committed. A transaction inside another is a savepoint
/// of that, so an inner part can fail alone, and nothing is durable before the outermost commit returns true.
///
/// A statement that fails ends the innermost of them: nothing more is executed until that object is gone, and it cannot
/// be committed. When the database has given up by itself (a full disk, an error of the medium), that is the outermost:
/// what came then would be a write of its own.
class Transaction
{
public:
    explicit Transaction(Connection &connection);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// False when it could not be begun, and after a statement in it has failed (both logged).
    bool isActive() const;
    /// Calls this once the writes are durable: after the commit of the outermost transaction, in the order in which
    /// they were handed over. It is dropped when this transaction is rolled back, or could not be begun inside another.
    /// Where the outermost could not be begun, each write is durable by itself, so it is called at once.
    void afterCommit(const std::function<void()> &tell);

    /// False when it could not be committed (logged); it is rolled back then.
    [[nodiscard]] bool commit();

private:
    bool begin();
    bool end();
    void rollBack();
    void tellAll();

    Connection &m_connection;
    int m_depth; ///< from 1, the outermost
    int m_changesBefore;
    qsizetype m_newsBefore;
    bool m_begun;
    bool m_open;
};
