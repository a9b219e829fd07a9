// SPDX-License-Identifier: Apache-2.0
#include "bench/LookUpRun.h"

#include "bench/BenchError.h"
#include "bench/BusClient.h"
#include "bench/MadeUpContacts.h"
#include "bench/Rounds.h"
#include "platform/records/ContactIds.h"

#include <algorithm>

namespace {

constexpr int warmUp = 50;
constexpr int perRound = 50;
constexpr int pageLength = 50;

QString idOf(int index)
{
    return ContactIds::ofRow(index + 1);
}

qint64 timeOf(const BusClient::Answer &answer, const QString &expectedId)
{
    const auto contacts = answer.value<ListContact>();
    if (contacts.size() != 1 || contacts.first().contactId != expectedId)
        throw BenchError(QStringLiteral("a look-up did not find %1").arg(expectedId));
    return answer.nanoseconds;
}

} // namespace

LookUpRun::LookUpRun(const BusClient &client, int size)
    : m_client(client)
    , m_size(size)
{
}

int LookUpRun::anyContact()
{
    return int(m_random() % unsigned(m_size));
}

qint64 LookUpRun::byNumber()
{
    const int index = anyContact();
    const QStringList numbers = MadeUpContacts::canonicalNumbers(index);
    const QString number = numbers.at(qsizetype(m_random() % unsigned(numbers.size())));
    return timeOf(m_client.callDirectory(QStringLiteral("getLocalContacts"), {number}), idOf(index));
}

qint64 LookUpRun::byUnknownNumber()
{
    const QString number = MadeUpContacts::canonicalNumbers(m_size + anyContact()).first();
    const auto answer = m_client.callDirectory(QStringLiteral("getLocalContacts"), {number});
    if (!answer.value<ListContact>().isEmpty())
        throw BenchError(QStringLiteral("somebody has a number that nobody was given"));
    return answer.nanoseconds;
}

qint64 LookUpRun::byId()
{
    const QString id = idOf(anyContact());
    return timeOf(m_client.callDirectory(QStringLiteral("getContactById"), {id}), id);
}

qint64 LookUpRun::page(int start) const
{
    const auto answer = m_client.callDirectory(QStringLiteral("getLocalContacts"), {start, pageLength});
    if (answer.value<ListContact>().size() != std::min(pageLength, m_size - start))
        throw BenchError(QStringLiteral("the page at %1 is not full").arg(start));
    return answer.nanoseconds;
}

void LookUpRun::measure(int calls, FigureTable &table, Progress &progress)
{
    Rounds rounds;
    std::vector<std::pair<Figure, std::size_t>> kinds;
    const auto add = [&](Figure figure, const Rounds::Call &call) { kinds.emplace_back(figure, rounds.add(call)); };
    const int last = std::max(0, m_size - pageLength);
    add(Figure::EmptyCall, [this](int) { return m_client.emptyCall().nanoseconds; });
    add(Figure::LookUpByNumber, [this](int) { return byNumber(); });
    add(Figure::LookUpOfUnknownNumber, [this](int) { return byUnknownNumber(); });
    add(Figure::LookUpById, [this](int) { return byId(); });
    add(Figure::FirstPage, [this](int) { return page(0); });
    add(Figure::MiddlePage, [this, last](int) { return page(last / 2); });
    add(Figure::LastPage, [this, last](int) { return page(last); });
    rounds.run(warmUp, calls, perRound, progress);

    for (const auto &[figure, kind] : kinds) {
        const Samples &samples = rounds.samples(kind);
        table.put(m_size, figure, {samples.median(), samples.percentile99()});
    }
    const auto median = [&](Figure figure) { return table.values(figure).value(m_size).value; };
    table.put(m_size, Figure::LookUpToEmptyCall, {median(Figure::LookUpByNumber) / median(Figure::EmptyCall), {}});
}
