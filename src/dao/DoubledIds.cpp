// SPDX-License-Identifier: Apache-2.0
#include "src/dao/DoubledIds.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/Connection.h"
#include "src/dao/DaoMisc.h"
#include "src/dao/Transaction.h"

#include <QList>

#include <algorithm>
#include <optional>

namespace {

struct Row
{
    qint64 rowId;
    QString contactId;
};

const QString copiesText = QStringLiteral(
    "SELECT rowid, contactId FROM CONTACT AS copy WHERE type=6 AND EXISTS (SELECT 1 FROM CONTACT AS other WHERE "
    "other.contactId=copy.contactId AND (other.type IS NOT 6 OR (ifnull(other.lastModificationDate,''), other.rowid) > "
    "(ifnull(copy.lastModificationDate,''), copy.rowid)))");

std::optional<QList<Row>> copies(Connection &connection)
{
    QList<Row> rows;
    Statement statement(connection, copiesText);
    Statement::Use use = statement.use();
    if (!use.eachRow([&rows](const Statement::Use &row) { rows.append({row.number(0), row.text(1)}); }))
        return std::nullopt;
    return rows;
}

} // namespace

bool DoubledIds::removeCopies(Connection &connection)
{
    const std::optional<QList<Row>> rows = copies(connection);
    if (!rows || rows->isEmpty())
        return rows.has_value();
    Transaction transaction(connection);
    DaoMisc misc(connection);
    const auto remove = [&](const Row &row) {
        const auto pairs = misc.pairs(row.contactId); // a trigger takes all of this id away
        return pairs &&
               connection.executeQuery(QStringLiteral("DELETE FROM CONTACT WHERE rowid=%1").arg(row.rowId))
                   .isActive() &&
               misc.replacePairs(row.contactId, *pairs);
    };
    if (!transaction.isActive() || !std::all_of(rows->cbegin(), rows->cend(), remove) || !transaction.commit())
        return false;
    connection.beginEpoch();
    KestinLogger::info("%1 cached copies with the ids of other contacts were removed", rows->size());
    return true;
}
