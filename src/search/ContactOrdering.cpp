// SPDX-License-Identifier: Apache-2.0
#include "src/search/ContactOrdering.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/LatinText.h"

#include <algorithm>
#include <vector>

namespace {

// The keys are made once a contact, not once a comparison.
struct Ranked
{
    QString nameKey;
    QString firstNameKey;
    const Contact *contact;

    bool operator<(const Ranked &other) const
    {
        const int order = nameKey.compare(other.nameKey);
        return order != 0 ? order < 0 : firstNameKey.compare(other.firstNameKey) < 0;
    }
};

Ranked ranked(const Contact &contact)
{
    return {latinText(contact.name), latinText(contact.firstName), &contact};
}

} // namespace

ListContact ContactOrdering::sortContactByName(const ListContact &contacts, bool byNameOnly, const QString &searchId,
                                               const QString &searchString)
{
    KestinLogger::debug("-- Method sortContactByName called with byNameOnly=[%1], searchString=[%2] --",
                        int(byNameOnly), searchString);
    if (byNameOnly && contacts.size() < 2)
        return contacts;
    ListContact onlyFirstName;
    std::vector<Ranked> ranking;
    ranking.reserve(size_t(contacts.size()));
    const QString searchKey = latinText(searchString);
    for (const Contact &contact : contacts) {
        Ranked entry = ranked(contact);
        const bool matchedByFirstName =
            !entry.nameKey.startsWith(searchKey) && entry.firstNameKey.startsWith(searchKey);
        if (!byNameOnly && matchedByFirstName)
            onlyFirstName.append(contact);
        else
            ranking.push_back(std::move(entry));
    }
    if (!byNameOnly)
        m_setAside.insert(searchId, onlyFirstName);
    std::sort(ranking.begin(), ranking.end());
    ListContact result;
    result.reserve(qsizetype(ranking.size()));
    for (const Ranked &entry : ranking)
        result.append(*entry.contact);
    return result;
}
