// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/recover/RecoveryProgress.h"
#include "client/recover/StoredRow.h"

#include <QHash>

#include <functional>
#include <limits>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

/// The tables of a database as far as SQLite itself reads them. Nothing that the database brings along, such as a
/// trigger, a view or a function in an index, is run. Each reading has an end, whatever the file says, and takes no
/// more memory than a few times the file.
class SqliteTables
{
public:
    using Take = std::function<void(const StoredRow &row)>;

    /// Opens a copy, to which SQLite may write what its journals hold. It is done with when this object goes; both
    /// arguments outlive it.
    SqliteTables(const QString &path, RecoveryProgress &progress);
    Q_DISABLE_COPY_MOVE(SqliteTables)

    /// Whether SQLite can tell which tables there are.
    bool isReadable() { return count(QStringLiteral("SELECT count(*) FROM sqlite_master")).has_value(); }
    bool has(const QString &table);
    /// The columns of a table in their order.
    QStringList columns(const QString &table);

    /// The rows that could be read from both ends of a table on. Between them, where it is not whole, are others; and
    /// so everywhere when the rows do not follow each other, because the tree leads to wrong pages.
    struct Walk
    {
        bool isWhole = false;
        qint64 after = std::numeric_limits<qint64>::min(); ///< the last row of the beginning
        qint64 before = std::numeric_limits<qint64>::max();
    };
    Walk walk(const QString &table, const QStringList &columns, const Take &take);

    /// The row, if there is such a row and it can be read.
    void read(const QString &table, const QStringList &columns, qint64 id, const Take &take);

    /// The ids of all rows and the values of a column, from an index that begins with the column. None when the index
    /// cannot be read to its end.
    std::optional<QHash<qint64, QString>> listed(const QString &table, const QString &index, const QString &column);

private:
    using Statement = std::unique_ptr<sqlite3_stmt, void (*)(sqlite3_stmt *)>;

    /// The row at which the statement stands. None when all rows together are larger than a file of this size can hold.
    std::optional<StoredRow> rowOf(const Statement &statement);
    enum class End { Reached, Broken, Astray };
    End follow(const QString &sql, const Take &take, const std::function<bool(qint64)> &isNext,
               std::optional<qint64> &last);
    Statement prepare(const QString &sql);
    std::optional<qint64> count(const QString &sql);
    int step(const Statement &statement);
    static int onProgress(void *self);

    std::unique_ptr<sqlite3, void (*)(sqlite3 *)> m_database;
    RecoveryProgress &m_progress;
    qint64 m_size;
    qint64 m_budget;    ///< bytes of rows that may still be read
    qint64 m_steps = 0; ///< of SQLite, in thousands, without a row
};
