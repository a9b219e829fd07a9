// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/dao/StoreCheck.h"

#include <QObject>

class Database;
class LongWork;

/// Looks after the file while the directory runs. Where a check or a statement finds it damaged the indexes are made
/// anew, which mends all that is no damage of the tables.
class StoreCare : public QObject
{
    Q_OBJECT

public:
    StoreCare(Database &database, LongWork &longWork);
    /// Waits for the check.
    ~StoreCare() override;

    /// Reads the whole file, in the background and with the time that nobody else wants.
    void check();

    /// Soon, and behind long work. Not again after it has failed, nor more than a few times: a medium that does not
    /// keep what is written would wear out.
    void repair();

private:
    void makeIndexesAnew();

    Database &m_database;
    LongWork &m_longWork;
    StoreCheck m_check;
    int m_repairsLeft = 3;
    bool m_isWanted = false;
};
