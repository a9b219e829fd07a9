// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/search/SearchMailbox.h"
#include "src/search/SearchThread.h"

/// Leads a search through the company directory. It makes no call itself: what is to be called it signals to the main
/// thread, and takes the answers from the mailbox, packet by packet, until the directory has no more, stays silent, or
/// the search is replaced.
class RemoteSearchThread : public SearchThread
{
    Q_OBJECT

public:
    /// The mailbox must outlive the thread and have a box for the search.
    RemoteSearchThread(SearchMailbox &mailbox, const QString &searchText, const QString &searchId);

Q_SIGNALS:
    void signal_getNextResults(const QString &searchId);
    void signal_stopSearch(const QString &searchId);

protected:
    void run() override;

    virtual void requestSearch() = 0;

    /// The texts of the log, which begin differently in each kind of search.
    struct Texts
    {
        const char *start;
        const char *notStarted;
        const char *noResults;
        const char *packet;
        const char *timeout;
        const char *finish;
        const char *more;
        const char *end;
    };
    virtual const Texts &texts() const = 0;

private:
    void search();
    bool takePacket();

    SearchMailbox &m_mailbox;
};

/// Searches the company directory by full name.
class RemoteSearchByNameThread : public RemoteSearchThread
{
    Q_OBJECT

public:
    using RemoteSearchThread::RemoteSearchThread;

Q_SIGNALS:
    void signal_searchByFullName(const QString &searchId, const QString &searchText);

protected:
    void requestSearch() override { Q_EMIT signal_searchByFullName(m_searchId, m_searchText); }
    const Texts &texts() const override;
};

/// Searches the company directory by phone number; most of its texts name it shorter.
class RemoteSearchByPhoneNumberThread : public RemoteSearchThread
{
    Q_OBJECT

public:
    using RemoteSearchThread::RemoteSearchThread;

Q_SIGNALS:
    void signal_searchByPhoneNumber(const QString &searchId, const QString &searchText);

protected:
    void requestSearch() override { Q_EMIT signal_searchByPhoneNumber(m_searchId, m_searchText); }
    const Texts &texts() const override;
};
