// SPDX-License-Identifier: Apache-2.0
#include "src/search/RemoteSearchThreads.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/PlatformEvents.h"

RemoteSearchThread::RemoteSearchThread(SearchMailbox &mailbox, const QString &searchText, const QString &searchId)
    : SearchThread(searchText, searchId)
    , m_mailbox(mailbox)
{
}

void RemoteSearchThread::run()
{
    KestinLogger::debug(texts().start, m_searchId);
    requestSearch();
    search();
    KestinLogger::debug(texts().end, m_searchId);
    if (m_mailbox.isReplaced(m_searchId))
        Q_EMIT signal_stopSearch(m_searchId);
    Q_EMIT signal_threadSearchFinished(m_searchId);
}

void RemoteSearchThread::search()
{
    if (m_mailbox.isReplaced(m_searchId))
        return;
    if (!m_mailbox.waitUntilStarted(m_searchId)) {
        KestinLogger::debug(texts().notStarted);
        return;
    }
    while (!m_mailbox.isReplaced(m_searchId)) {
        Q_EMIT signal_getNextResults(m_searchId);
        if (!m_mailbox.waitForAnswer(m_searchId)) {
            KestinLogger::debug(texts().noResults, m_searchId);
            Q_EMIT signal_stopSearch(m_searchId);
            return;
        }
        if (!takePacket())
            return;
    }
}

/// Hands the packet over; whether more may follow.
bool RemoteSearchThread::takePacket()
{
    const SearchMailbox::Answer answer = m_mailbox.take(m_searchId);
    KestinLogger::debug(texts().packet, m_searchId, answer.contacts.size());
    if (!answer.contacts.isEmpty())
        Q_EMIT signal_addContactsToMap(m_searchId, answer.contacts, false);
    switch (PacketStatus(answer.status)) {
    case PacketStatus::TimedOut:
        KestinLogger::debug(texts().timeout);
        Q_EMIT signal_stopSearch(m_searchId);
        return false;
    case PacketStatus::Finished:
        KestinLogger::debug(texts().finish, m_searchId);
        return false;
    default:
        KestinLogger::debug(texts().more, answer.status, m_searchId);
        return true;
    }
}

const RemoteSearchThread::Texts &RemoteSearchByNameThread::texts() const
{
    static constexpr Texts texts{
        "[RemoteSearchByNameThread] start search Id: %1",
        "[RemoteSearchByNameThread] Security: stopping search unstarted",
        "[RemoteSearchByNameThread] Security: stopping search %1 w/o results",
        "[RemoteSearchByNameThread]search %1 getting a packet of [%2] contacts from WS",
        "[RemoteSearchByNameThread] UDA GetNextResults returns TIMEOUT. I'm stopping.",
        "[RemoteSearchByNameThread] UDA GetNextResults returns FINISH. I'm stopping search %1 ",
        "[RemoteSearchByNameThread] UDA GetNextResults returns %1. I ask more results for search %2",
        "[RemoteSearchByNameThread] ending search %1",
    };
    return texts;
}

const RemoteSearchThread::Texts &RemoteSearchByPhoneNumberThread::texts() const
{
    static constexpr Texts texts{
        "[RemoteSearchByPhoneNumberThread] start search Id: %1",
        "[RemoteSearchByPhoneThread] Security: stopping search unstarted",
        "[RemoteSearchByPhoneThread] Security: stopping search %1 w/o results",
        "[RemoteSearchByPhoneThread]search %1 getting a packet of [%2] contacts from WS",
        "[RemoteSearchByPhoneThread] UDA GetNextResults returns TIMEOUT. I'm stopping.",
        "[RemoteSearchByPhoneThread] UDA GetNextResults returns FINISH. I'm stopping search %1 ",
        "[RemoteSearchByPhoneThread] UDA GetNextResults returns %1. I ask more results for search %2",
        "[RemoteSearchByPhoneThread] ending search %1",
    };
    return texts;
}

#include "moc_RemoteSearchThreads.cpp"
