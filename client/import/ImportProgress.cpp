// SPDX-License-Identifier: Apache-2.0
#include "client/import/ImportProgress.h"

#include "client/text/Terminal.h"

#include <cstdio>

namespace {

constexpr int barWidth = 40;
constexpr qint64 redrawMs = 100;

QString barOf(qint64 done, qint64 total)
{
    const int filled = int(done * barWidth / total);
    return QStringLiteral("[%1%2] %3% ")
        .arg(QString(filled, QLatin1Char('#')), QString(barWidth - filled, QLatin1Char(' ')))
        .arg(done * 100 / total, 3);
}

} // namespace

ImportProgress::ImportProgress()
    : m_onTerminal(Terminal::errorIsTerminal())
{
    m_sinceDrawn.start();
}

ImportProgress::~ImportProgress()
{
    clear();
}

void ImportProgress::show(qint64 done, qint64 total, const QString &text)
{
    if (!m_onTerminal || m_sinceDrawn.elapsed() < redrawMs)
        return;
    m_sinceDrawn.restart();
    m_drawn = true;
    const QString bar = total > 0 ? barOf(std::min(done, total), total) : QString();
    std::fprintf(stderr, "\r\x1b[K%s%s", bar.toUtf8().constData(), text.toUtf8().constData());
}

void ImportProgress::clear()
{
    if (m_drawn)
        std::fputs("\r\x1b[K", stderr);
    m_drawn = false;
}
