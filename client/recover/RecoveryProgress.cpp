// SPDX-License-Identifier: Apache-2.0
#include "client/recover/RecoveryProgress.h"

#include "client/bus/CommandFailure.h"

#include <QCoreApplication>

RecoveryProgress::RecoveryProgress()
{
    m_sinceTurn.start();
}

void RecoveryProgress::advance(qint64 done, qint64 total)
{
    Q_EMIT advanced(done, total);
    if (isInterrupted())
        throw CommandFailure(ExitCode::Refused, QStringLiteral("interrupted; nothing is changed"));
}

bool RecoveryProgress::isInterrupted()
{
    constexpr qint64 turnMs = 50;
    if (m_sinceTurn.elapsed() >= turnMs) {
        m_sinceTurn.restart();
        QCoreApplication::processEvents();
    }
    return m_isInterrupted;
}

#include "moc_RecoveryProgress.cpp"
