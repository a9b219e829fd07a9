// SPDX-License-Identifier: Apache-2.0
#include "src/search/ContactOrdering.h"

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

} // namespace

ListContact ContactOrdering::sortContactByName(const ListContact &contacts, bool byNameOnly,
                                               const QString &searchString, ListContact *setAside)
{
    KestinLogger::debug("-- Method sortContactByName called with byNameOnly=[%1], searchString=[%2] --",
                        int(byNameOnly), searchString);
    if (byNameOnly && contacts.size() < 2)
        return contacts;
    std::vector<Ranked> ranking;
    ranking.reserve(size_t(contacts.size()));
    const QString searchKey = latinText(searchString);
    for (const Contact &contact : contacts) {
        Ranked entry{latinText(contact.name), latinText(contact.firstName), &contact};
        const bool matchedByFirstName = !entry.firstKey.startsWith(searchKey) && entry.secondKey.startsWith(searchKey);
        if (byNameOnly || !matchedByFirstName)
            ranking.push_back(std::move(entry));
        else if (setAside)
            setAside->append(contact);
    }
    return ordered(std::move(ranking));
}

ListContact ContactOrdering::sortContactByFirstName(const ListContact &contacts)
{
    std::vector<Ranked> ranking;
    ranking.reserve(size_t(contacts.size()));
    for (const Contact &contact : contacts)
        ranking.push_back({latinText(contact.firstName), latinText(contact.name), &contact});
    return ordered(std::move(ranking));
}
