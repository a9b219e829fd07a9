// SPDX-License-Identifier: Apache-2.0
#include "src/directory/StoreCare.h"

#include "platform/framework/KestinLogger.h"
#include "platform/framework/LongWork.h"
#include "src/dao/Database.h"
#include "src/dao/IndexRepair.h"

#include <utility>

StoreCare::StoreCare(Database &database, LongWork &longWork)
    : m_database(database)
    , m_longWork(longWork)
{
    connect(&m_check, &StoreCheck::damageFound, this, &StoreCare::repair);
    m_database.connection().setDamageHandler([this] { repair(); });
}

StoreCare::~StoreCare()
{
    m_database.connection().setDamageHandler({});
    m_check.wait();
}

void StoreCare::check()
{
    m_check.start(QThread::IdlePriority);
}

void StoreCare::repair()
{
    if (m_repairsLeft == 0 || std::exchange(m_isWanted, true))
        return;
    const auto begin = [this] { m_longWork.after(this, [this] { makeIndexesAnew(); }); };
    QMetaObject::invokeMethod(this, begin, Qt::QueuedConnection); // a statement may be reading
}

void StoreCare::makeIndexesAnew()
{
    --m_repairsLeft;
    Connection &connection = m_database.connection();
    if (IndexRepair::makeAnew(connection)) {
        KestinLogger::warning("The database %1 was damaged; its indexes were made anew", m_database.filePath());
    } else {
        m_repairsLeft = 0;
        KestinLogger::error("The database %1 is damaged in its tables. What can still be read of it is told by: "
                            "kestin-dir recover %1 --dry-run",
                            m_database.filePath());
    }
    m_isWanted = false;
    connection.beginEpoch(); // what was counted may have been counted wrongly
}
