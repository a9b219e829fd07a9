// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMutex>
#include <QThread>

struct sqlite3;

/// Reads the whole file once and tells whether it is damaged. Made and deleted on the main thread.
class StoreCheck : public QThread
{
    Q_OBJECT

public:
    /// Ends it.
    ~StoreCheck() override;

Q_SIGNALS:
    /// From its own thread.
    void damageFound();

protected:
    void run() override;

private:
    void interrupt();
    void setReading(sqlite3 *database);

    QMutex m_mutex;
    sqlite3 *m_reading = nullptr;
};
