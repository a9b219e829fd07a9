// SPDX-License-Identifier: Apache-2.0
#include "src/dao/ContactOrder.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/LatinText.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

// The keys are made once a contact, not once a comparison.
struct Ranked
{
    QString firstKey;
    QString secondKey;
    const Contact *contact;

    bool operator<(const Ranked &other) const
    {
        const int order = firstKey.compare(other.firstKey);
        return order != 0 ? order < 0 : secondKey.compare(other.secondKey) < 0;
    }
};

ListContact ordered(std::vector<Ranked> ranking)
{
    std::sort(ranking.begin(), ranking.end());
    ListContact result;
    result.reserve(qsizetype(ranking.size()));
    for (const Ranked &entry : ranking)
        result.append(*entry.contact);
    return result;
}

void logCall(bool byNameOnly, const QString &searchString)
{
    KestinLogger::debug("-- Method sortContactByName called with byNameOnly=[%1], searchString=[%2] --",
                        int(byNameOnly), searchString);
}

} // namespace

ListContact ContactOrder::byName(const ListContact &contacts, const QString &searchString)
{
    logCall(true, searchString);
    if (contacts.size() < 2)
        return contacts;
    std::vector<Ranked> ranking;
    ranking.reserve(size_t(contacts.size()));
    for (const Contact &contact : contacts)
        ranking.push_back({latinText(contact.name), latinText(contact.firstName), &contact});
    return ordered(std::move(ranking));
}

ContactOrder::Found ContactOrder::forSearch(const ListContact &contacts, const QString &searchString)
{
    logCall(false, searchString);
    Found found;
    std::vector<Ranked> ranking;
    ranking.reserve(size_t(contacts.size()));
    const QString searchKey = latinText(searchString);
    for (const Contact &contact : contacts) {
        Ranked entry{latinText(contact.name), latinText(contact.firstName), &contact};
        if (!entry.firstKey.startsWith(searchKey) && entry.secondKey.startsWith(searchKey))
            found.setAside.append(contact);
        else
            ranking.push_back(std::move(entry));
    }
    found.ordered = ordered(std::move(ranking));
    return found;
}

ListContact ContactOrder::byFirstName(const ListContact &contacts)
{
    std::vector<Ranked> ranking;
    ranking.reserve(size_t(contacts.size()));
    for (const Contact &contact : contacts)
        ranking.push_back({latinText(contact.firstName), latinText(contact.name), &contact});
    return ordered(std::move(ranking));
}
