// SPDX-License-Identifier: Apache-2.0
#include "bench/SearchRun.h"

#include "bench/BareStore.h"
#include "bench/BenchError.h"
#include "bench/MadeUpContacts.h"
#include "bench/Rounds.h"
#include "bench/ServiceProcess.h"
#include "bench/Stand.h"
#include "platform/records/ContactSummary.h"

#include <QThread>

namespace {

constexpr int warmUp = 10;
constexpr int perRound = 10;
constexpr int pageLength = 50;

/// The figures of one group of names.
struct GroupFigures
{
    Figure bareQuery;
    Figure firstResults;
    Figure toFloor;
    Figure completion;
};

constexpr std::array<GroupFigures, MadeUpContacts::nameGroups.size()> groupFigures{{
    {Figure::BareQuery1, Figure::FirstResults1, Figure::FirstResultsToFloor1, Figure::Completion1},
    {Figure::BareQuery20, Figure::FirstResults20, Figure::FirstResultsToFloor20, Figure::Completion20},
    {Figure::BareQuery200, Figure::FirstResults200, Figure::FirstResultsToFloor200, Figure::Completion200},
    {Figure::BareQuery2000, Figure::FirstResults2000, Figure::FirstResultsToFloor2000, Figure::Completion2000},
}};

/// What is measured of one group.
struct Kinds
{
    std::size_t search = 0;
    std::size_t query = 0;
    Samples completions;
};

FigureTable::Value valueOf(const Samples &samples)
{
    return {samples.median(), samples.percentile99()};
}

} // namespace

SearchRun::SearchRun(Stand &stand, int size)
    : m_stand(stand)
    , m_size(size)
    , m_searcher(stand.connection())
{
}

void SearchRun::measure(int searches, FigureTable &table, Progress &progress)
{
    const bool areMany = m_size >= MadeUpContacts::nameGroups.back().storeSize;
    if (areMany)
        measureMemory(table);
    measureSearches(searches, table, progress);
    measureEverybody(std::max(1, searches / 10), table, progress);
    if (areMany)
        measurePages(searches, table, progress);
}

/// Behind a first search, which takes what every search needs. What is spare is given back a while later.
void SearchRun::measureMemory(FigureTable &table)
{
    const auto anonymous = [this] {
        QThread::sleep(1);
        return ProcessMemory::of(m_stand.directory().processId()).anonymous;
    };
    const MadeUpContacts::NameGroup &longest = MadeUpContacts::nameGroups.back();
    m_searcher.search(QLatin1String(MadeUpContacts::nameGroups.front().name), 1, true);
    const double before = anonymous();
    m_searcher.search(QLatin1String(longest.name), longest.hits, true);
    table.put(m_size, Figure::SearchMemory, {anonymous() - before, {}});
    m_stand.client().callDirectory(QStringLiteral("purgeSearchResults"), {m_searcher.searchId()});
    table.put(m_size, Figure::PurgedMemory, {anonymous() - before, {}});
}

void SearchRun::measureEverybody(int searches, FigureTable &table, Progress &progress)
{
    BareQuery bare(m_stand.databasePath());
    Rounds rounds;
    const std::size_t search =
        rounds.add([this](int) { return m_searcher.search(QString(), m_size, true).firstResults; });
    const std::size_t query = rounds.add([&bare, this](int) { return bare.read(QString(), m_size); });
    rounds.run(1, searches, 1, progress);
    const double first = rounds.samples(search).median();
    table.put(m_size, Figure::BareQueryAll, valueOf(rounds.samples(query)));
    table.put(m_size, Figure::FirstResultsAll, valueOf(rounds.samples(search)));
    table.put(m_size, Figure::FirstResultsToQueryAll, {first / rounds.samples(query).median(), {}});
}

void SearchRun::measureSearches(int searches, FigureTable &table, Progress &progress)
{
    BareQuery bare(m_stand.databasePath());
    Rounds rounds;
    std::array<Kinds, groupFigures.size()> groups;
    const std::size_t empty = rounds.add([this](int) { return m_stand.client().emptyCall().nanoseconds; });
    const auto isThere = [this](std::size_t i) { return m_size >= MadeUpContacts::nameGroups.at(i).storeSize; };
    for (std::size_t i = 0; i < groups.size() && isThere(i); ++i) {
        const QString name = QLatin1String(MadeUpContacts::nameGroups.at(i).name);
        const int hits = MadeUpContacts::nameGroups.at(i).hits;
        Kinds &kinds = groups.at(i);
        kinds.search = rounds.add([this, name, hits, &kinds](int number) {
            const SearchClient::Times times = m_searcher.search(name, hits, true);
            if (number >= warmUp)
                kinds.completions.add(times.completion);
            return times.firstResults;
        });
        kinds.query = rounds.add([&bare, name, hits](int) { return bare.read(name, hits); });
    }
    rounds.run(warmUp, searches, perRound, progress);

    const double call = rounds.samples(empty).median();
    table.put(m_size, Figure::EmptyCallBesideSearches, valueOf(rounds.samples(empty)));
    for (std::size_t i = 0; i < groups.size() && isThere(i); ++i) {
        const GroupFigures &figures = groupFigures.at(i);
        const Samples &first = rounds.samples(groups.at(i).search);
        const Samples &query = rounds.samples(groups.at(i).query);
        table.put(m_size, figures.bareQuery, valueOf(query));
        table.put(m_size, figures.firstResults, valueOf(first));
        table.put(m_size, figures.completion, valueOf(groups.at(i).completions));
        // The results come as a signal, one way through the bus; the call that asks is part of the floor.
        table.put(m_size, figures.toFloor, {(first.median() - call / 2) / (call + query.median()), {}});
    }
}

qint64 SearchRun::page(int start) const
{
    const auto answer =
        m_stand.client().callDirectory(QStringLiteral("getSearchResults"), {m_searcher.searchId(), start, pageLength});
    if (answer.value<ListContactSummary>().size() != pageLength)
        throw BenchError(QStringLiteral("the page of results at %1 is not full").arg(start));
    return answer.nanoseconds;
}

void SearchRun::measurePages(int calls, FigureTable &table, Progress &progress)
{
    const MadeUpContacts::NameGroup &longest = MadeUpContacts::nameGroups.back();
    m_searcher.search(QLatin1String(longest.name), longest.hits, true);
    const int last = longest.hits - pageLength;
    Rounds rounds;
    const std::size_t first = rounds.add([this](int) { return page(0); });
    const std::size_t middle = rounds.add([this, last](int) { return page(last / 2); });
    const std::size_t end = rounds.add([this, last](int) { return page(last); });
    rounds.run(warmUp, calls, perRound, progress);
    table.put(m_size, Figure::FirstResultsPage, valueOf(rounds.samples(first)));
    table.put(m_size, Figure::MiddleResultsPage, valueOf(rounds.samples(middle)));
    table.put(m_size, Figure::LastResultsPage, valueOf(rounds.samples(end)));
}
