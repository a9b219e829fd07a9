// SPDX-License-Identifier: Apache-2.0
#include "bench/Progress.h"

#include <cstdio>

#include <unistd.h>

Progress::Progress()
    : m_isTerminal(isatty(STDERR_FILENO) == 1)
{
}

Progress::~Progress()
{
    print(QString());
}

void Progress::begin(const QString &task)
{
    m_task = task;
    m_shownPercent = -1;
    print(task);
}

void Progress::show(int done, int total)
{
    const int percent = total > 0 ? int(100LL * done / total) : 100;
    if (percent == m_shownPercent)
        return;
    m_shownPercent = percent;
    print(QStringLiteral("%1 %2 %").arg(m_task).arg(percent));
}

void Progress::print(const QString &line)
{
    if (m_isTerminal)
        std::fprintf(stderr, "\r\033[K%s", qPrintable(line));
}
