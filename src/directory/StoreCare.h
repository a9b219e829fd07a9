// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/dao/StoreCheck.h"

#include <QDeadlineTimer>
#include <QObject>

#include <chrono>

class Database;
class LongWork;

/// Looks after the file while the directory runs. Where a check or a statement finds it damaged the indexes are made
/// anew. Damage of the tables, or of the list of free pages, is not mended by that, and told.
class StoreCare : public QObject
{
    Q_OBJECT

public:
    StoreCare(Database &database, LongWork &longWork);
    ~StoreCare() override;

    /// Reads the whole file, in the background and with the time that nobody else wants.
    void check();

    /// Soon, and behind long work. Where the file cannot be written, it is tried again after a while. Not more than a
    /// few times in the life of a process: a medium that does not keep what is written would wear out.
    void repair();

private:
    void makeIndexesAnew();
    void tellMended();
    void tellUnmended();

    Database &m_database;
    LongWork &m_longWork;
    StoreCheck m_check;
    int m_repairsLeft = 10;
    bool m_isWanted = false;
    QDeadlineTimer m_rest; ///< until then nothing is mended
    std::chrono::milliseconds m_untilRetry = std::chrono::seconds(30);
};
