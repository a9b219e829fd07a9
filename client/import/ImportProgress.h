// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>
#include <QString>

/// The progress bar of an import on the standard error, where a person sees it. Nothing is drawn into a file or pipe.
class ImportProgress
{
public:
    ImportProgress();
    ~ImportProgress();
    Q_DISABLE_COPY_MOVE(ImportProgress)

    /// `done` of `total` bytes are read, `cards` cards are settled. `total` is 0 when it is unknown. Draws ten times a
    /// second at most.
    void show(qint64 done, qint64 total, int cards);
    /// Takes the bar away, so that a line can be written in its place.
    void clear();

private:
    bool m_onTerminal;
    bool m_drawn = false;
    QElapsedTimer m_sinceDrawn;
};
