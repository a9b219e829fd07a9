// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>
#include <QObject>

/// What goes on while a database is read: how far it is, and whether somebody wants it to end.
class RecoveryProgress : public QObject
{
    Q_OBJECT

public:
    RecoveryProgress();

    /// Tells how far the step that is under way has come, and lets the event loop have a turn now and then. Throws
    /// CommandFailure when it was interrupted.
    void advance(qint64 done, qint64 total);

    /// Whether it was interrupted; lets the event loop have a turn as well.
    bool isInterrupted();

public Q_SLOTS:
    void interrupt() { m_isInterrupted = true; }

Q_SIGNALS:
    void advanced(qint64 done, qint64 total);

private:
    QElapsedTimer m_sinceTurn;
    bool m_isInterrupted = false;
};
