// SPDX-License-Identifier: Apache-2.0
#include "src/search/SearchResults.h"

ListContactSummary SearchResults::summariesOf(const ListContact &contacts, qsizetype start, qsizetype count)
{
    ListContactSummary result;
    const ListContact part = contacts.mid(start, count);
    result.reserve(part.size());
    for (const Contact &contact : part)
        result.append(contact);
    return result;
}
