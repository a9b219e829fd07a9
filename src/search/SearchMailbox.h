// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QHash>

#include <condition_variable>
#include <mutex>

/// Where the answers of the company directory wait for the worker of their search. The main thread opens a box for a
/// search, puts answers in and closes it; the worker waits and takes. Any thread. An answer for a search that has no
/// box, or was not accepted yet, is dropped: it is that of an earlier search with the same id.
///
/// A wait is up to 100 times 100 ms and ends as soon as what it waits for is there.
class SearchMailbox
{
public:
    struct Answer
    {
        ListContact contacts;
        int status = 0; ///< PacketStatus
    };

    void open(const QString &searchId);
    void close(const QString &searchId);

    /// The search was accepted: results can be asked for.
    void setStarted(const QString &searchId);
    void put(const QString &searchId, const Answer &answer);

    /// Nobody wants this search any more: its worker stops asking.
    void setReplaced(const QString &searchId);
    /// True also when the service ends.
    bool isReplaced(const QString &searchId) const;

    /// The company directory has gone: the waits of the searches that run are over at once, and count as in vain.
    void abandon();
    /// The service ends: every wait is over at once, and counts as in vain.
    void end();

    /// False when the search has not started within the limit.
    bool waitUntilStarted(const QString &searchId);
    /// False when no answer has come within the limit. Ends with true also when the search is replaced.
    bool waitForAnswer(const QString &searchId);
    /// What has come since the last time; empty, with status 0, when nothing has.
    Answer take(const QString &searchId);

private:
    struct Box
    {
        bool isStarted = false;
        bool isReady = false;
        bool isReplaced = false;
        bool isAbandoned = false;
        Answer answer;
    };

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    QHash<QString, Box> m_boxes;
    bool m_hasEnded = false;
};
