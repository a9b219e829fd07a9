// SPDX-License-Identifier: Apache-2.0
#include "src/dao/StoreCheck.h"

#include "src/dao/IndexRepair.h"
#include "src/dao/WorkerDatabase.h"

void StoreCheck::run()
{
    WorkerDatabase database;
    Connection &connection = database.contacts().connection();
    connection.executeQuery(QStringLiteral("PRAGMA cache_size=16")); // each page is read once
    if (!IndexRepair::isSound(connection).value_or(true))
        Q_EMIT damageFound();
}
