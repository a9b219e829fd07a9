// SPDX-License-Identifier: Apache-2.0
#include "src/directory/StoreCare.h"

#include "platform/framework/KestinLogger.h"
#include "platform/framework/LongWork.h"
#include "src/dao/Database.h"
#include "src/dao/IndexRepair.h"

#include <QTimer>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// Somebody else may have done with the file by then, or there is room again.
constexpr std::chrono::milliseconds longestUntilRetry = 1h;
/// Until those have told of it who met the damage before it was mended.
constexpr std::chrono::milliseconds longestEcho = 5s;

} // namespace

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
}

void StoreCare::check()
{
    m_check.start();
}

void StoreCare::repair()
{
    if (!m_rest.hasExpired() || std::exchange(m_isWanted, true))
        return;
    const auto begin = [this] { m_longWork.after(this, [this] { makeIndexesAnew(); }); };
    QMetaObject::invokeMethod(this, begin, Qt::QueuedConnection); // a statement may be reading
}

void StoreCare::makeIndexesAnew()
{
    Connection &connection = m_database.connection();
    switch (IndexRepair::makeAnew(connection)) {
    case IndexRepair::Outcome::Done:
        tellMended();
        break;
    case IndexRepair::Outcome::NotNow:
        KestinLogger::warning("The database %1 is damaged and cannot be mended now", m_database.filePath());
        m_rest.setRemainingTime(m_untilRetry);
        QTimer::singleShot(m_untilRetry + longestEcho, this, &StoreCare::repair);
        m_untilRetry = std::min(2 * m_untilRetry, longestUntilRetry);
        break;
    case IndexRepair::Outcome::Damaged:
        tellUnmended();
        break;
    }
    m_isWanted = false;
    connection.beginEpoch(); // what was counted may have been counted wrongly
}

void StoreCare::tellMended()
{
    KestinLogger::warning("The database %1 was damaged; its indexes were made anew", m_database.filePath());
    if (--m_repairsLeft > 0) {
        m_rest.setRemainingTime(longestEcho);
        return;
    }
    KestinLogger::error("The database %1 is damaged again and again, and is not mended any more before the next start",
                        m_database.filePath());
    m_rest = QDeadlineTimer(QDeadlineTimer::Forever);
}

void StoreCare::tellUnmended()
{
    KestinLogger::error(
        "The database %1 is damaged, and not in its indexes alone. What can still be read of it is told "
        "by: kestin-dir recover %1 --dry-run",
        m_database.filePath());
    m_rest = QDeadlineTimer(QDeadlineTimer::Forever);
}

#include "moc_StoreCare.cpp"
