// SPDX-License-Identifier: Apache-2.0
#include "src/dao/StoreCheck.h"

#include "src/dao/IndexRepair.h"
#include "src/dao/WorkerDatabase.h"

#include <sqlite3.h>

#include <sys/resource.h>

StoreCheck::~StoreCheck()
{
    requestInterruption();
    do
        interrupt(); // without effect on a statement that is just about to begin
    while (!wait(10));
}

void StoreCheck::interrupt()
{
    const QMutexLocker locker(&m_mutex);
    if (m_reading)
        sqlite3_interrupt(m_reading);
}

/// As long as it is set, it can be interrupted.
void StoreCheck::setReading(sqlite3 *database)
{
    const QMutexLocker locker(&m_mutex);
    m_reading = database;
}

void StoreCheck::run()
{
    // Of this thread, on Linux. An idle thread would do nothing at its end either where others are busy, and cannot be
    // made another.
    setpriority(PRIO_PROCESS, 0, 19);
    WorkerDatabase database;
    Connection &connection = database.contacts().connection();
    connection.executeQuery(QStringLiteral("PRAGMA cache_size=16")); // each page is read once
    setReading(connection.database());
    const bool isConsistent = isInterruptionRequested() || IndexRepair::isConsistent(connection).value_or(true);
    setReading(nullptr);
    if (!isConsistent)
        Q_EMIT damageFound();
}

#include "moc_StoreCheck.cpp"
