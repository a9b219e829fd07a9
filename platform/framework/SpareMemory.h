// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTimer>

#ifdef __GLIBC__
#include <malloc.h>
#endif

/// Gives back to the system what a long list took while it was made: the heap keeps freed texts that lie between
/// others.
class SpareMemory
{
public:
    SpareMemory()
    {
        m_timer.setSingleShot(true);
        m_timer.callOnTimeout([] { giveBack(); });
    }

    /// A list of so many contacts is about to go. What few of them take is kept for the next list.
    void expectAfter(qsizetype contacts)
    {
        constexpr qsizetype many = 500;
        constexpr int untilGoneMs = 500; // and its answer is sent, and the worker that made it has ended
        if (contacts >= many)
            m_timer.start(untilGoneMs);
    }

private:
    static void giveBack()
    {
#ifdef __GLIBC__
        malloc_trim(0);
#endif
    }

    QTimer m_timer;
};
