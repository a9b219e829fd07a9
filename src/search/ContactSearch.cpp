// SPDX-License-Identifier: Apache-2.0
#include "src/search/ContactSearch.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"
#include "platform/records/DirectoryCodes.h"
#include "src/dao/DaoContact.h"
#include "src/numbers/CanonicalNumbers.h"
#include "src/search/LocalSearchThreads.h"

#include <utility>

namespace {

/// Ids come back as somebody else's.
bool isStill(const Contact &stored, const ContactSummary &listed)
{
    return stored.contactId == listed.contactId && stored.type == listed.type && stored.name == listed.name &&
           stored.firstName == listed.firstName;
}

} // namespace

struct ContactSearch::StartTexts
{
    const char *notReachable;
    const char *bothSides;
    const char *remoteReplaced;
};

ContactSearch::ContactSearch(const DirectoryFields &fields, DaoContact &dao, CanonicalNumbers &numbers)
    : m_fields(fields)
    , m_dao(dao)
    , m_numbers(numbers)
{
}

ContactSearch::~ContactSearch()
{
    m_mailbox.end();
    dropNext();
    const auto workers = findChildren<SearchThread *>(); // those too that have just told their end
    for (SearchThread *worker : workers) {
        worker->disconnect();
        worker->wait();
        delete worker;
    }
}

int ContactSearch::startSearchContactByName(const QString &searchId, const QString &name, int nbContacts,
                                            bool localOnly)
{
    KestinLogger::debug("-- Method startSearchContactByName called with searchId=[%1] ,name=[%2] and localOnly=[%3] --",
                        searchId, name, localOnly ? "true" : "false");
    const SearchRequest request{SearchRequest::ByName, searchId, name, {}, nbContacts, localOnly, m_fields.searchMode};
    m_isTyping = m_isTyping || m_running || !m_finished.searchId.isNull();
    dropResults();
    static constexpr StartTexts texts{
        "[startSearchcontactByName] UDA remote server is not reachable, search will be local only",
        "[startSearchcontactByName] UDA remote server is OK, search %1 should be both local and remote",
        "Remote search %1 is ongoing, search  %2 will replace it",
    };
    decide(request, texts);
    return ResultCode::done;
}

int ContactSearch::startSearchContactByPhoneNumber(const QString &searchId, const QString &phoneNumber, bool localOnly)
{
    KestinLogger::debug(
        "-- Method startSearchContactByPhoneNumber called with searchId=[%1] ,phoneNumber=[%2] and localOnly=[%3] --",
        searchId, phoneNumber, localOnly ? "true" : "false");
    const SearchRequest request{SearchRequest::ByPhoneNumber, searchId, {}, phoneNumber, 0, localOnly,
                                m_fields.searchMode};
    dropResults();
    if (phoneNumber.isEmpty()) {
        KestinLogger::debug("The phone number is empty");
        if (m_running && m_running->isReplaced())
            m_waiting = request; // it is the last request, and the last one wins
        Q_EMIT completedByPhoneNumber(searchId, Contact());
        return ResultCode::done;
    }
    static constexpr StartTexts texts{
        "[startSearchcontactByPhone] UDA remote server is not reachable, search will be local only",
        "[startSearchcontactByPhone] UDA remote server is OK, search %1 should be both local and remote",
        "Remote search %1 is ongoing, search  %2 will replace it)",
    };
    decide(request, texts);
    return ResultCode::done;
}

/// Every request empties what was found before, also what the running search has found so far.
void ContactSearch::dropResults()
{
    dropFinished();
    if (m_running)
        m_running->dropFound();
}

void ContactSearch::dropFinished()
{
    m_spareMemory.expectAfter(m_finished.size());
    m_finished = {};
}

/// Starts what is requested, or lets it wait for the end of the running search.
void ContactSearch::decide(const SearchRequest &request, const StartTexts &texts)
{
    const bool withRemote = !request.localOnly && m_fields.icsLogin;
    if (withRemote)
        KestinLogger::warning(texts.bothSides, request.searchId);
    if (m_running) {
        KestinLogger::warning(withRemote ? texts.remoteReplaced
                                         : "local search %1 is ongoing, search  %2 will replace it",
                              m_running->request().searchId, request.searchId);
        m_waiting = request;
        m_running->setReplaced();
        return;
    }
    if (request.localOnly)
        KestinLogger::warning("Search is local only");
    startWorkers(request, withRemote);
    if (!request.localOnly && !withRemote)
        KestinLogger::warning(texts.notReachable);
}

void ContactSearch::startWorkers(const SearchRequest &request, bool withRemote)
{
    m_running = std::make_unique<RunningSearch>(request, m_mailbox, withRemote, m_next);
    connect(m_running.get(), &RunningSearch::searchResults, this, &ContactSearch::searchResults);
    const QList<SearchThread *> workers = m_running->workers();
    for (SearchThread *worker : workers) {
        worker->setParent(this); // it may outlive the search by the little that is left to do after its end is told
        Q_EMIT workerCreated(worker);
    }
    for (auto worker = workers.crbegin(); worker != workers.crend(); ++worker)
        startWorker(*worker); // the local one first
}

void ContactSearch::startWorker(SearchThread *worker)
{
    if (worker->begin())
        return;
    KestinLogger::error("A thread of search %1 cannot be started, so it finds nothing", m_running->request().searchId);
    // Like the end of any worker, after the caller has been answered.
    QMetaObject::invokeMethod(
        this, [this, worker] { endUnstarted(worker); }, Qt::QueuedConnection);
}

void ContactSearch::endUnstarted(SearchThread *worker)
{
    const QString searchId = m_running->request().searchId;
    if (qobject_cast<LocalSearchByNameThread *>(worker))
        addContacts(searchId, {}, true);
    finishWorker(worker, searchId);
    delete worker;
}

void ContactSearch::addContacts(const QString &searchId, const ListContact &contacts, bool toLocalList)
{
    if (!takesContacts(searchId))
        return;
    if (toLocalList) {
        m_running->addLocal(contacts);
    } else {
        ListContact found = contacts;
        rewritePhotoAddresses(found);
        m_running->addToMain(found);
    }
    KestinLogger::debug("Search of id %1 now contains %2 results", searchId, m_running->found().contacts.size());
}

/// Of a search that is replaced, only as long as another id waits: without that it is purged, and its own id stands for
/// the search that waits.
bool ContactSearch::takesContacts(const QString &searchId) const
{
    if (!m_running || m_running->request().searchId != searchId)
        return false;
    return !m_running->isReplaced() || (m_waiting && m_waiting->searchId != searchId);
}

void ContactSearch::rewritePhotoAddresses(ListContact &contacts) const
{
    if (!m_fields.removeHttpsFromPhotoUrl)
        return;
    KestinLogger::info("RemoveHttpsFromPhotoUrl: true!");
    for (Contact &contact : contacts) {
        KestinLogger::debug("Photo URL: %1", AddressText::withoutUserInfo(contact.photo));
        if (!contact.photo.startsWith(QLatin1String("https://")))
            continue;
        contact.photo.replace(0, 5, QLatin1String("http"));
        KestinLogger::debug("New photo URL: %1", AddressText::withoutUserInfo(contact.photo));
    }
}

void ContactSearch::finishWorker(QObject *sender, const QString &searchId)
{
    if (!sender) {
        KestinLogger::error("KestinDirectory::slot_threadSearchFinishe : the sender pointer is not valid!");
        return;
    }
    auto *thread = qobject_cast<QThread *>(sender);
    if (!thread) {
        KestinLogger::error("KestinDirectory::slot_threadSearchFinished : this object is not type of QThread!");
        return;
    }
    const bool found = m_running && m_running->removeWorker(thread);
    const qsizetype remaining = m_running ? m_running->workers().size() : 0;
    KestinLogger::debug("slot_threadSearchFinished : the pointer is %1", found ? "suppressed" : "not suppressed");
    KestinLogger::debug("One thread has finished for search of id %1: %2 threads remaining", searchId, remaining);
    if (found && remaining == 0)
        complete();
}

void ContactSearch::complete()
{
    const SearchRequest request = m_running->request();
    KestinLogger::debug("Search of id %1 is finished and contains %2 results", request.searchId,
                        m_running->found().contacts.size());
    if (m_running->isReplaced()) {
        m_running.reset();
        startWaiting();
        return;
    }
    const RunningSearch::Outcome outcome = m_running->takeOutcome();
    m_running.reset();
    m_finished = outcome.results;
    m_spareMemory.expectAfter(m_finished.size()); // it was read as whole contacts
    tellCompletion(request, outcome);
    if (request.kind == SearchRequest::ByName && m_isTyping)
        makeNext();
}

void ContactSearch::tellCompletion(const SearchRequest &request, const RunningSearch::Outcome &outcome)
{
    if (request.kind == SearchRequest::ByName)
        Q_EMIT completedByName(request.searchId, int(outcome.results.size()), outcome.summaries);
    else
        Q_EMIT completedByPhoneNumber(request.searchId, outcome.results.contacts.value(0));
}

void ContactSearch::startWaiting()
{
    const std::optional<SearchRequest> request = std::exchange(m_waiting, std::nullopt);
    if (!request)
        return;
    if (request->kind == SearchRequest::ByName)
        startSearchContactByName(request->searchId, request->name, request->nbContacts, request->localOnly);
    else
        startSearchContactByPhoneNumber(request->searchId, request->phoneNumber, request->localOnly);
}

/// Behind the first letter the next one comes soon, unless who searches purges each time.
void ContactSearch::makeNext()
{
    if (!m_next)
        m_next = LocalSearchByNameThread::ahead();
}

void ContactSearch::dropNext()
{
    if (!m_next)
        return;
    m_next->setParent(this); // until it has ended
    connect(m_next.get(), &QThread::finished, m_next.get(), &QObject::deleteLater);
    m_next.release()->dismiss();
}

/// Of the running search what it has found so far; nothing when the search is unknown.
SearchResults ContactSearch::resultsOf(const QString &searchId) const
{
    if (m_running && m_running->request().searchId == searchId)
        return m_running->found();
    if (m_finished.searchId == searchId)
        return m_finished;
    return {};
}

ListContactSummary ContactSearch::getSearchResults(const QString &searchId, int startInd, int length) const
{
    KestinLogger::debug("-- Method getSearchResults called with searchId=[%1] ,startInd=[%2] and length=[%3] --",
                        searchId, startInd, length);
    return resultsOf(searchId).page(startInd, length);
}

Contact ContactSearch::getContactFromSearch(const QString &searchId, const QString &contactId) const
{
    KestinLogger::debug("-- Method getContactFromSearch called with searchId=[%1] and contactId=[%2] --", searchId,
                        contactId);
    std::optional<Contact> contact = wholeRecord(searchId, contactId);
    if (!contact)
        return {};
    m_numbers.makeCanonicalNumberListWithoutPrefix(*contact);
    return *contact;
}

/// Of the first listed contact with this id that can be had whole; if there is none, what is listed.
std::optional<Contact> ContactSearch::wholeRecord(const QString &searchId, const QString &contactId) const
{
    const SearchResults results = resultsOf(searchId);
    std::optional<Contact> summary;
    for (const ContactSummary &listed : results.summaries) {
        if (listed.contactId != contactId)
            continue;
        const ListContact stored = m_dao.getContact(contactId).value_or(ListContact());
        if (!stored.isEmpty() && isStill(stored.first(), listed))
            return stored.first();
        if (!summary)
            static_cast<ContactSummary &>(summary.emplace()) = listed;
    }
    for (const Contact &listed : results.contacts) {
        if (listed.contactId == contactId)
            return listed;
    }
    return summary;
}

int ContactSearch::purgeSearchResults(const QString &searchId)
{
    KestinLogger::debug("-- Method purgeSearchResults called with searchId=[%1] --", searchId);
    m_waiting.reset();
    if (m_running && m_running->request().searchId == searchId)
        m_running->setReplaced();
    else if (m_finished.searchId == searchId)
        dropFinished();
    m_isTyping = false;
    dropNext();
    return ResultCode::done;
}

#include "moc_ContactSearch.cpp"
