// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/SpareMemory.h"
#include "src/fields/DirectoryFields.h"
#include "src/search/RunningSearch.h"
#include "src/search/SearchMailbox.h"
#include "src/search/SearchRequest.h"
#include "src/search/SearchResults.h"
#include "src/search/SearchThread.h"

#include <QObject>

#include <memory>
#include <optional>

class CanonicalNumbers;
class DaoContact;
class LocalSearchByNameThread;

/// Runs searches over the phone and the company directory. One search runs at a time. A request that comes meanwhile
/// waits; of several requests the last wins. Results are kept for paging until they are purged or another search is
/// asked for.
///
/// A search completes as what it was started as, whatever was asked for after it. The workers have threads of their own
/// and hand over through the signals that whoever hears of workerCreated connects.
class ContactSearch : public QObject
{
    Q_OBJECT

public:
    ContactSearch(const DirectoryFields &fields, DaoContact &dao, CanonicalNumbers &numbers);
    /// Waits for the workers, which stop asking.
    ~ContactSearch() override;

    /// These answer ResultCode::done at once. `nbContacts`: how many summaries are sent with the first results and with
    /// the completion together.
    int startSearchContactByName(const QString &searchId, const QString &name, int nbContacts, bool localOnly);
    int startSearchContactByPhoneNumber(const QString &searchId, const QString &phoneNumber, bool localOnly);

    /// A page of the results; a length of -1 means to the end. An unknown search has none.
    ListContactSummary getSearchResults(const QString &searchId, int startInd, int length) const;
    /// The whole record; an empty record when the contact is not among the results. A contact that the phone found by
    /// name is read as it is stored now if that still is the contact listed (id, type and both names); if not, another
    /// result with the id is told, or else what the summary holds.
    Contact getContactFromSearch(const QString &searchId, const QString &contactId) const;
    /// Drops the results; of a running search also those to come, and its completion is not told. Drops the search that
    /// waits as well, whatever its id. Answers ResultCode::done.
    int purgeSearchResults(const QString &searchId);

    /// From the workers: contacts found, `toLocalList` only for the phone's own by name; the end of a worker.
    void addContacts(const QString &searchId, const ListContact &contacts, bool toLocalList);
    void finishWorker(QObject *worker, const QString &searchId);

    /// Where the answers of the company directory are put.
    SearchMailbox &mailbox() { return m_mailbox; }

Q_SIGNALS:
    /// Before it is started. The worker is deleted by its `finished`; a worker that cannot be started is deleted by
    /// this class.
    void workerCreated(SearchThread *worker);
    void searchResults(const QString &searchId, int nbResults, const ListContactSummary &summaries);
    void completedByName(const QString &searchId, int nbResults, const ListContactSummary &summaries);
    void completedByPhoneNumber(const QString &searchId, const Contact &contact);

private:
    struct StartTexts;
    void dropResults();
    void dropFinished();
    void decide(const SearchRequest &request, const StartTexts &texts);
    void startWorkers(const SearchRequest &request, bool withRemote);
    void startWorker(SearchThread *worker);
    void endUnstarted(SearchThread *worker);

    bool takesContacts(const QString &searchId) const;
    void rewritePhotoAddresses(ListContact &contacts) const;

    void complete();
    void tellCompletion(const SearchRequest &request, const RunningSearch::Outcome &outcome);
    void startWaiting();
    void makeNext();
    void dropNext();

    SearchResults resultsOf(const QString &searchId) const;
    std::optional<Contact> wholeRecord(const QString &searchId, const QString &contactId) const;

    const DirectoryFields &m_fields;
    DaoContact &m_dao;
    CanonicalNumbers &m_numbers;
    SearchMailbox m_mailbox;
    std::unique_ptr<RunningSearch> m_running; ///< null when no search runs
    std::optional<SearchRequest> m_waiting;   ///< is started when the running search, which it replaces, has ended
    SearchResults m_finished;                 ///< of the search that completed last
    SpareMemory m_spareMemory;
    std::unique_ptr<LocalSearchByNameThread> m_next; ///< ready for the next search by name; may be null
    bool m_isTyping = false;                         ///< search follows search without a purge
};
