// SPDX-License-Identifier: Apache-2.0
#pragma once

class Connection;

/// Groups writes: all of them happen, or none. Rolls back unless committed. One inside another is a savepoint of the
/// outer one, so an inner part can fail alone, and nothing is durable before the outermost commit returns true.
///
/// After a write that failed, nothing more may be written under the same object, only under a new one inside another:
/// the database gives up a transaction by itself when the disk is full, and what came then would be on its own.
class Transaction
{
public:
    explicit Transaction(Connection &connection);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// False when it could not be begun (logged): nothing must be written under it.
    bool isActive() const { return m_active; }
    /// False when it could not be committed (logged); it is rolled back then.
    bool commit();

private:
    bool begin();
    bool end();
    void rollBack();

    Connection &m_connection;
    bool m_outermost;
    bool m_active;
};
