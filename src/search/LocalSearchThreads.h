// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/search/SearchThread.h"

#include <memory>
#include <semaphore>

/// Finds the contacts of the phone whose latin name begins with the text. Hands over one packet, be it empty.
///
/// To open a connection and to read the schema takes longer than most searches, so the thread of the next search can do
/// both ahead: while it is idle, its connection holds no lock.
class LocalSearchByNameThread : public SearchThread
{
    Q_OBJECT

public:
    using SearchThread::SearchThread;

    /// A thread that is ready for a search soon; null when none can be had. It goes on until begin or dismiss.
    static std::unique_ptr<LocalSearchByNameThread> ahead();
    /// What a thread that was made ahead searches. To be called once, before begin.
    void take(const QString &searchText, const QString &searchId);
    bool begin() override;
    /// Nobody needs the thread that was made ahead: it ends soon.
    void dismiss();

protected:
    void run() override;

private:
    std::binary_semaphore m_begun{0};
    bool m_isAhead = false;
    bool m_isWanted = true; ///< settled when m_begun is released
};

/// Finds the contacts of the phone with this number, taken as it is. Hands over one packet, or none.
class LocalSearchByPhoneNumberThread : public SearchThread
{
    Q_OBJECT

public:
    using SearchThread::SearchThread;

protected:
    void run() override;
};
