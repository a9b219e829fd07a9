// SPDX-License-Identifier: Apache-2.0
#include "src/search/ContactSearch.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"
#include "src/dao/ContactOrder.h"
#include "src/dao/DaoContact.h"
#include "src/numbers/CanonicalNumbers.h"
#include "src/search/LocalSearchThreads.h"
#include "src/search/RemoteSearchThreads.h"

#include <utility>

namespace {

/// Ids come back as somebody else's.
bool isStill(const Contact &stored, const Contact &listed)
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
    m_last = {SearchRequest::ByName, searchId, name, {}, nbContacts, localOnly, m_fields.searchMode};
    KestinLogger::debug("-- Method startSearchContactByName called with searchId=[%1] ,name=[%2] and localOnly=[%3] --",
                        searchId, name, localOnly ? "true" : "false");
    m_results.clear();
    m_hasLocalResults = false;
    static constexpr StartTexts texts{
        "[startSearchcontactByName] UDA remote server is not reachable, search will be local only",
        "[startSearchcontactByName] UDA remote server is OK, search %1 should be both local and remote",
        "Remote search %1 is ongoing, search  %2 will replace it",
    };
    return decide(texts);
}

int ContactSearch::startSearchContactByPhoneNumber(const QString &searchId, const QString &phoneNumber, bool localOnly)
{
    m_last = {SearchRequest::ByPhoneNumber, searchId, {}, phoneNumber, 0, localOnly, m_fields.searchMode};
    KestinLogger::debug(
        "-- Method startSearchContactByPhoneNumber called with searchId=[%1] ,phoneNumber=[%2] and localOnly=[%3] --",
        searchId, phoneNumber, localOnly ? "true" : "false");
    m_results.clear();
    m_hasLocalResults = false;
    if (phoneNumber.isEmpty()) {
        KestinLogger::debug("The phone number is empty");
        Q_EMIT completedByPhoneNumber(searchId, Contact());
        return 0;
    }
    static constexpr StartTexts texts{
        "[startSearchcontactByPhone] UDA remote server is not reachable, search will be local only",
        "[startSearchcontactByPhone] UDA remote server is OK, search %1 should be both local and remote",
        "Remote search %1 is ongoing, search  %2 will replace it)",
    };
    return decide(texts);
}

/// Starts the last request, or marks the running search as replaced by it.
int ContactSearch::decide(const StartTexts &texts)
{
    const bool withRemote = !m_last.localOnly && m_fields.icsLogin;
    if (withRemote)
        KestinLogger::warning(texts.bothSides, m_last.searchId);
    if (isRunning()) {
        if (withRemote)
            KestinLogger::warning(texts.remoteReplaced, m_running.searchId, m_last.searchId);
        else
            KestinLogger::warning("local search %1 is ongoing, search  %2 will replace it", m_running.searchId,
                                  m_last.searchId);
        m_mailbox.setReplaced(true);
        return 0;
    }
    if (m_last.localOnly)
        KestinLogger::warning("Search is local only");
    startWorkers(withRemote);
    if (!m_last.localOnly && !withRemote)
        KestinLogger::warning(texts.notReachable);
    return 0;
}

void ContactSearch::startWorkers(bool withRemote)
{
    m_running = m_last;
    if (withRemote) {
        m_mailbox.open(m_running.searchId);
        m_workers.append(makeRemoteWorker());
    }
    m_workers.append(makeLocalWorker());
    const QList<SearchThread *> workers = m_workers;
    for (SearchThread *worker : workers) {
        worker->setParent(this);
        Q_EMIT workerCreated(worker);
    }
    for (auto worker = workers.crbegin(); worker != workers.crend(); ++worker)
        startWorker(*worker); // the local one first
}

void ContactSearch::startWorker(SearchThread *worker)
{
    worker->start();
    if (worker->isRunning() || worker->isFinished())
        return;
    KestinLogger::error("A thread of search %1 cannot be started, so it finds nothing", m_running.searchId);
    // Like the end of any worker, after the caller has been answered.
    QMetaObject::invokeMethod(
        this, [this, worker] { endUnstarted(worker); }, Qt::QueuedConnection);
}

void ContactSearch::endUnstarted(SearchThread *worker)
{
    const QString searchId = m_running.searchId;
    if (qobject_cast<LocalSearchByNameThread *>(worker))
        addContacts(searchId, {}, true);
    finishWorker(worker, searchId);
    delete worker;
}

SearchThread *ContactSearch::makeLocalWorker() const
{
    if (m_running.kind == SearchRequest::ByName)
        return new LocalSearchByNameThread(m_running.name, m_running.searchId);
    return new LocalSearchByPhoneNumberThread(m_running.phoneNumber, m_running.searchId);
}

SearchThread *ContactSearch::makeRemoteWorker()
{
    if (m_running.kind == SearchRequest::ByName)
        return new RemoteSearchByNameThread(m_mailbox, m_running.name, m_running.searchId);
    return new RemoteSearchByPhoneNumberThread(m_mailbox, m_running.phoneNumber, m_running.searchId);
}

void ContactSearch::addContacts(const QString &searchId, const ListContact &contacts, bool toLocalList)
{
    if (m_mailbox.isReplaced() && m_last.searchId == searchId)
        return; // the id stands for what was asked for since
    if (toLocalList)
        addLocal(searchId, contacts);
    else
        addToMain(searchId, contacts);
    KestinLogger::debug("Search of id %1 now contains %2 results", searchId, m_results.of(searchId).main.size());
}

void ContactSearch::addLocal(const QString &searchId, const ListContact &contacts)
{
    m_hasLocalResults = true;
    SearchResults::Lists &lists = m_results.of(searchId);
    lists.local = ContactOrder::byName(contacts);
    const ListContactSummary summaries = SearchResults::summaries(lists.local, 0, qMax(0, m_running.nbContacts));
    if (!lists.local.isEmpty()) {
        Q_EMIT searchResults(searchId, int(lists.local.size()), summaries);
        KestinLogger::debug("%1 local results sent", summaries.size());
    }
    const qsizetype budget = m_running.nbContacts - summaries.size();
    if (!isPerDirectory() || budget <= 0 || lists.main.isEmpty())
        return;
    const ListContactSummary further = SearchResults::summaries(lists.main, 0, budget);
    Q_EMIT searchResults(searchId, int(lists.local.size() + lists.main.size()), further);
    KestinLogger::debug("%1 remote results sent", further.size());
}

void ContactSearch::addToMain(const QString &searchId, ListContact contacts)
{
    rewritePhotoAddresses(contacts);
    SearchResults::Lists &lists = m_results.of(searchId);
    if (isPerDirectory())
        contacts = setAside(contacts, lists);
    if (!lists.hasMain)
        KestinLogger::debug("%1 contacts added to search of id %2 (first results)", contacts.size(), searchId);
    else
        KestinLogger::debug("%1 contacts added to search of id %2", contacts.size(), searchId);
    lists.hasMain = true;
    lists.main += contacts;
    if (m_running.kind == SearchRequest::ByName && isPerDirectory() && !m_mailbox.isReplaced() && m_hasLocalResults)
        tellPacket(searchId, contacts);
}

/// The contacts without those that go to the lists' own of whom only the first name matches; in order.
ListContact ContactSearch::setAside(const ListContact &contacts, SearchResults::Lists &lists) const
{
    ContactOrder::Found found = ContactOrder::forSearch(contacts, m_running.name);
    lists.setAside += found.setAside;
    return found.ordered;
}

void ContactSearch::tellPacket(const QString &searchId, const ListContact &packet)
{
    const SearchResults::Lists &lists = m_results.of(searchId);
    const qsizetype total = lists.local.size() + lists.main.size();
    if (m_running.nbContacts - (total - packet.size()) <= 0)
        return;
    const ListContactSummary summaries = SearchResults::summaries(packet, 0, -1);
    Q_EMIT searchResults(searchId, int(total), summaries);
    KestinLogger::debug("%1 remote results sent", summaries.size());
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
    const qsizetype found = m_workers.removeIf([thread](SearchThread *worker) { return worker == thread; });
    KestinLogger::debug("slot_threadSearchFinished : the pointer is %1", found > 0 ? "suppressed" : "not suppressed");
    KestinLogger::debug("One thread has finished for search of id %1: %2 threads remaining", searchId,
                        m_workers.size());
    if (found > 0 && m_workers.isEmpty())
        complete(searchId);
}

void ContactSearch::complete(const QString &searchId)
{
    KestinLogger::debug("Search of id %1 is finished and contains %2 results", searchId,
                        m_results.main(searchId).size());
    m_mailbox.close(searchId);
    if (m_mailbox.isReplaced()) {
        m_mailbox.setReplaced(false);
        m_results.remove(searchId);
        restartWithLastRequest();
    } else if (m_running.kind == SearchRequest::ByName) {
        completeByName(searchId);
    } else {
        Q_EMIT completedByPhoneNumber(searchId, m_results.main(searchId).value(0));
    }
}

void ContactSearch::restartWithLastRequest()
{
    const SearchRequest request = m_last;
    if (request.kind == SearchRequest::ByName)
        startSearchContactByName(request.searchId, request.name, request.nbContacts, request.localOnly);
    else if (request.kind == SearchRequest::ByPhoneNumber)
        startSearchContactByPhoneNumber(request.searchId, request.phoneNumber, request.localOnly);
}

void ContactSearch::completeByName(const QString &searchId)
{
    SearchResults::Lists &lists = m_results.of(searchId);
    qsizetype sent = lists.main.size();
    if (isPerDirectory()) {
        sent += lists.local.size();
    } else {
        lists.main = setAside(lists.main, lists);
    }
    lists.summariesInMain = lists.local.size();
    ListContact joined = std::exchange(lists.local, {});
    joined += lists.main;
    joined += ContactOrder::byFirstName(std::exchange(lists.setAside, {}));
    lists.main = std::move(joined);
    ListContactSummary summaries;
    const qsizetype budget = m_running.nbContacts - sent;
    if (budget > 0 && lists.main.size() > sent) {
        summaries = SearchResults::summaries(lists.main, sent, budget);
        KestinLogger::debug("%1 remote results sent", summaries.size());
    }
    Q_EMIT completedByName(searchId, int(lists.main.size()), summaries);
}

ListContactSummary ContactSearch::getSearchResults(const QString &searchId, int startInd, int length) const
{
    KestinLogger::debug("-- Method getSearchResults called with searchId=[%1] ,startInd=[%2] and length=[%3] --",
                        searchId, startInd, length);
    return SearchResults::summaries(m_results.main(searchId), startInd, length);
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
    const ListContact contacts = m_results.main(searchId);
    const qsizetype summaries = m_results.summariesInMain(searchId);
    std::optional<Contact> summary;
    for (qsizetype i = 0; i < contacts.size(); ++i) {
        const Contact &listed = contacts.at(i);
        if (listed.contactId != contactId)
            continue;
        if (i >= summaries)
            return listed;
        const ListContact stored = m_dao.getContact(contactId).value_or(ListContact());
        if (!stored.isEmpty() && isStill(stored.first(), listed))
            return stored.first();
        if (!summary)
            summary = listed;
    }
    return summary;
}

int ContactSearch::purgeSearchResults(const QString &searchId)
{
    KestinLogger::debug("-- Method purgeSearchResults called with searchId=[%1] --", searchId);
    m_last.kind = SearchRequest::None;
    if (isRunning() && m_running.searchId == searchId)
        m_mailbox.setReplaced(true);
    else
        m_results.remove(searchId);
    return 0;
}
