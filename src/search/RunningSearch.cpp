// SPDX-License-Identifier: Apache-2.0
#include "src/search/RunningSearch.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/ContactOrder.h"
#include "src/fields/DirectoryFields.h"
#include "src/search/LocalSearchThreads.h"
#include "src/search/RemoteSearchThreads.h"
#include "src/search/SearchMailbox.h"

#include <utility>

RunningSearch::RunningSearch(SearchRequest request, SearchMailbox &mailbox, bool withRemote,
                             std::unique_ptr<LocalSearchByNameThread> &ready)
    : m_request(std::move(request))
    , m_mailbox(mailbox)
{
    if (withRemote) {
        m_mailbox.open(m_request.searchId);
        m_workers.append(makeRemoteWorker());
    }
    m_workers.append(makeLocalWorker(ready));
}

RunningSearch::~RunningSearch()
{
    m_mailbox.close(m_request.searchId);
}

SearchThread *RunningSearch::makeLocalWorker(std::unique_ptr<LocalSearchByNameThread> &ready) const
{
    if (isByName() && ready) {
        ready->take(m_request.name, m_request.searchId);
        return ready.release();
    }
    if (isByName())
        return new LocalSearchByNameThread(m_request.name, m_request.searchId);
    return new LocalSearchByPhoneNumberThread(m_request.phoneNumber, m_request.searchId);
}

SearchThread *RunningSearch::makeRemoteWorker() const
{
    if (isByName())
        return new RemoteSearchByNameThread(m_mailbox, m_request.name, m_request.searchId);
    return new RemoteSearchByPhoneNumberThread(m_mailbox, m_request.phoneNumber, m_request.searchId);
}

bool RunningSearch::isPerDirectory() const
{
    return m_request.searchMode == DirectoryFields::perDirectory;
}

bool RunningSearch::removeWorker(const QObject *worker)
{
    return m_workers.removeIf([worker](const SearchThread *own) { return own == worker; }) > 0;
}

void RunningSearch::setReplaced()
{
    m_isReplaced = true;
    m_mailbox.setReplaced(m_request.searchId);
}

void RunningSearch::addLocal(const ListContact &contacts)
{
    const ListContactSummary local = ContactOrder::byName(SearchResults::summariesOf(contacts, 0, -1));
    m_lists.local = local;
    const ListContactSummary summaries = local.mid(0, qMax(0, m_request.nbContacts));
    if (!local.isEmpty()) {
        Q_EMIT searchResults(m_request.searchId, int(local.size()), summaries);
        KestinLogger::debug("%1 local results sent", summaries.size());
    }
    const ListContact main = mainList();
    const qsizetype budget = m_request.nbContacts - summaries.size();
    if (!isPerDirectory() || budget <= 0 || main.isEmpty())
        return;
    const ListContactSummary further = SearchResults::summariesOf(main, 0, budget);
    Q_EMIT searchResults(m_request.searchId, int(local.size() + main.size()), further);
    KestinLogger::debug("%1 remote results sent", further.size());
}

void RunningSearch::addToMain(ListContact contacts)
{
    if (isPerDirectory())
        contacts = setAside(contacts);
    if (!m_lists.main)
        KestinLogger::debug("%1 contacts added to search of id %2 (first results)", contacts.size(),
                            m_request.searchId);
    else
        KestinLogger::debug("%1 contacts added to search of id %2", contacts.size(), m_request.searchId);
    if (!m_lists.main)
        m_lists.main.emplace();
    *m_lists.main += contacts;
    if (isByName() && isPerDirectory() && !m_isReplaced && m_lists.local)
        tellPacket(contacts);
}

/// The contacts in order, without those of which only the first name matches: these go to the lists' own.
ListContact RunningSearch::setAside(const ListContact &contacts)
{
    ContactOrder::Found found = ContactOrder::forSearch(contacts, m_request.name);
    m_lists.setAside += found.setAside;
    return found.ordered;
}

void RunningSearch::tellPacket(const ListContact &packet)
{
    const qsizetype total = m_lists.local->size() + m_lists.main->size();
    if (m_request.nbContacts - (total - packet.size()) <= 0)
        return;
    const ListContactSummary summaries = SearchResults::summariesOf(packet, 0, -1);
    Q_EMIT searchResults(m_request.searchId, int(total), summaries);
    KestinLogger::debug("%1 remote results sent", summaries.size());
}

RunningSearch::Outcome RunningSearch::takeOutcome()
{
    SearchResults results{m_request.searchId, std::exchange(m_lists.local, std::nullopt).value_or(ListContactSummary()),
                          mainList()};
    if (!isByName())
        return {results, {}};
    qsizetype told = results.contacts.size();
    if (isPerDirectory())
        told += results.summaries.size();
    else
        results.contacts = setAside(results.contacts);
    results.contacts += ContactOrder::byFirstName(std::exchange(m_lists.setAside, {}));
    return {results, dueAtCompletion(results, told)};
}

ListContactSummary RunningSearch::dueAtCompletion(const SearchResults &results, qsizetype start) const
{
    const qsizetype budget = m_request.nbContacts - start;
    if (budget <= 0 || results.size() <= start)
        return {};
    ListContactSummary summaries = results.page(start, budget);
    KestinLogger::debug("%1 remote results sent", summaries.size());
    return summaries;
}

#include "moc_RunningSearch.cpp"
