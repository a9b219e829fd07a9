// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/search/SearchRequest.h"
#include "src/search/SearchResults.h"

#include <QList>
#include <QObject>

#include <memory>
#include <optional>

class LocalSearchByNameThread;
class SearchMailbox;
class SearchThread;

/// A search from its start to the end of its last worker: what it was asked for, who works for it, what they have found
/// so far, and whether anybody still wants it.
class RunningSearch : public QObject
{
    Q_OBJECT

public:
    /// Makes the workers and does not begin them; of a search by name it takes the phone's own from `ready`, if there
    /// is a thread. A search of the company directory too has a box in the mailbox as long as it lives. The mailbox
    /// must outlive it, and no other search with its id may live beside it.
    RunningSearch(SearchRequest request, SearchMailbox &mailbox, bool withRemote,
                  std::unique_ptr<LocalSearchByNameThread> &ready);
    ~RunningSearch() override;

    const SearchRequest &request() const { return m_request; }
    /// Those that have not ended, the phone's own last. They belong to whoever starts them.
    const QList<SearchThread *> &workers() const { return m_workers; }
    /// False when it was no worker of this search, or has been removed before.
    bool removeWorker(const QObject *worker);

    /// Nobody wants it any more: its worker in the company directory stops asking, and its end is not to be told.
    void setReplaced();
    bool isReplaced() const { return m_isReplaced; }
    /// Another search was asked for, whether that replaces this search or not.
    void dropFound() { m_lists = {}; }

    /// What the phone has found by name; replaces what it had found.
    void addLocal(const ListContact &contacts);
    /// What the company directory sent, or the phone has found by number.
    void addToMain(ListContact contacts);

    /// What can be paged through while it runs: all but what the phone has found by name.
    SearchResults found() const { return {m_request.searchId, {}, mainList()}; }

    struct Outcome
    {
        SearchResults results;
        ListContactSummary summaries; ///< told with the completion of a search by name
    };
    /// All of it in its final order. To be called once, at the end.
    Outcome takeOutcome();

Q_SIGNALS:
    /// Contacts were found by name. `nbResults`: how many in all so far.
    void searchResults(const QString &searchId, int nbResults, const ListContactSummary &summaries);

private:
    SearchThread *makeLocalWorker(std::unique_ptr<LocalSearchByNameThread> &ready) const;
    SearchThread *makeRemoteWorker() const;

    bool isByName() const { return m_request.kind == SearchRequest::ByName; }
    bool isPerDirectory() const;
    ListContact mainList() const { return m_lists.main.value_or(ListContact()); }
    ListContact setAside(const ListContact &contacts);
    void tellPacket(const ListContact &packet);
    ListContactSummary dueAtCompletion(const SearchResults &results, qsizetype start) const;

    /// A list is there as soon as something was handed over for it, be it an empty packet.
    struct Lists
    {
        std::optional<ListContact> main;         ///< what the company directory sent and the phone has found by number
        std::optional<ListContactSummary> local; ///< what the phone has found by name
        ListContact setAside;                    ///< those of which only the first name matched
    };

    const SearchRequest m_request;
    SearchMailbox &m_mailbox;
    QList<SearchThread *> m_workers;
    Lists m_lists;
    bool m_isReplaced = false;
};
