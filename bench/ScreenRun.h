// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/FigureTable.h"
#include "bench/Progress.h"
#include "platform/records/EventArgument.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>
#include <QProcess>
#include <QTimer>

class Stand;

/// What somebody in front of the screen waits for: kestin-presentation in a window of 480 x 272 without a display,
/// drawn by the processor. A BenchError when it does not do what it is told.
class ScreenRun : public QObject
{
    Q_OBJECT

public:
    /// Whether kestin-presentation is there.
    static bool isPossible();

    /// `size` is the number of contacts in the store.
    ScreenRun(const Stand &stand, int size);
    ~ScreenRun() override;

    /// `times` is how often each is done.
    void measure(int times, FigureTable &table, Progress &progress);

private Q_SLOTS:
    void noteResults();

private:
    qint64 nanosecondsOf(const QString &line);
    void raise(const QString &event, const ListEventArgument &arguments) const;
    void measureCallers(int times, FigureTable &table, Progress &progress);
    void measureFirstResults(int times, FigureTable &table, Progress &progress);
    void measureScrolling(int times, FigureTable &table, Progress &progress);
    void take();

    const Stand &m_stand;
    int m_size;
    QElapsedTimer m_clock;
    QProcess m_screen;
    QEventLoop m_loop;
    QTimer m_limit;
    qint64 m_told = 0; ///< when the first results of the search came; 0: not yet
};
