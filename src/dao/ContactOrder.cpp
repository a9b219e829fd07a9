// SPDX-License-Identifier: Apache-2.0
#include "src/dao/ContactOrder.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/LatinText.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

// The keys are made once a contact, not once a comparison.
struct Ranked
{
    QString firstKey;
    QString secondKey;
    qsizetype position; ///< in the list

    bool operator<(const Ranked &other) const
    {
        const int order = firstKey.compare(other.firstKey);
        return order != 0 ? order < 0 : secondKey.compare(other.secondKey) < 0;
    }
};
using Ranking = std::vector<Ranked>;

template <typename Record>
Ranking ranked(const QList<Record> &list, QString ContactSummary::*first, QString ContactSummary::*second)
{
    Ranking ranking;
    ranking.reserve(size_t(list.size()));
    for (qsizetype i = 0; i < list.size(); ++i)
        ranking.push_back({latinText(list.at(i).*first), latinText(list.at(i).*second), i});
    return ranking;
}

template <typename Record>
QList<Record> ordered(QList<Record> list, Ranking ranking)
{
    std::sort(ranking.begin(), ranking.end());
    QList<Record> result;
    result.reserve(qsizetype(ranking.size()));
    for (const Ranked &entry : ranking)
        result.append(std::move(list[entry.position]));
    return result;
}

template <typename Record>
QList<Record> orderedByName(QList<Record> list)
{
    if (list.size() < 2)
        return list;
    Ranking ranking = ranked(list, &ContactSummary::name, &ContactSummary::firstName);
    return ordered(std::move(list), std::move(ranking));
}

void logCall(bool byNameOnly, const QString &searchString)
{
    KestinLogger::debug("-- Method sortContactByName called with byNameOnly=[%1], searchString=[%2] --",
                        int(byNameOnly), searchString);
}

} // namespace

ListContact ContactOrder::byName(ListContact contacts, const QString &searchString)
{
    logCall(true, searchString);
    return orderedByName(std::move(contacts));
}

ListContactSummary ContactOrder::byName(ListContactSummary summaries)
{
    logCall(true, {});
    return orderedByName(std::move(summaries));
}

ContactOrder::Found ContactOrder::forSearch(const ListContact &contacts, const QString &searchString)
{
    logCall(false, searchString);
    Found found;
    Ranking ranking = ranked(contacts, &Contact::name, &Contact::firstName);
    const QString searchKey = latinText(searchString);
    const auto isSetAside = [&searchKey](const Ranked &entry) {
        return !entry.firstKey.startsWith(searchKey) && entry.secondKey.startsWith(searchKey);
    };
    for (const Ranked &entry : ranking) {
        if (isSetAside(entry))
            found.setAside.append(contacts.at(entry.position));
    }
    std::erase_if(ranking, isSetAside);
    found.ordered = ordered(contacts, std::move(ranking));
    return found;
}

ListContact ContactOrder::byFirstName(ListContact contacts)
{
    Ranking ranking = ranked(contacts, &Contact::firstName, &Contact::name);
    return ordered(std::move(contacts), std::move(ranking));
}
