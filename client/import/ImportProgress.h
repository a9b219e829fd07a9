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

    /// Of a step, `done` of `total` is done; the latter is 0 when it is unknown. `text` stands behind the bar. Draws
    /// ten times a second at most.
    void show(qint64 done, qint64 total, const QString &text);
    /// Takes the bar away, so that a line can be written in its place.
    void clear();

private:
    bool m_onTerminal;
    bool m_drawn = false;
    QElapsedTimer m_sinceDrawn;
};
