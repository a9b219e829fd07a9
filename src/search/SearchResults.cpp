// SPDX-License-Identifier: Apache-2.0
#include "src/search/SearchResults.h"

ListContactSummary SearchResults::page(qsizetype start, qsizetype count) const
{
    const qint64 end = count < 0 ? size() : qMin<qint64>(size(), qint64(start) + count);
    ListContactSummary result;
    for (qsizetype i = qMax<qsizetype>(0, start); i < end; ++i) {
        if (i < summaries.size())
            result.append(summaries.at(i));
        else
            result.append(contacts.at(i - summaries.size()));
    }
    return result;
}

ListContactSummary SearchResults::summariesOf(const ListContact &contacts, qsizetype start, qsizetype count)
{
    ListContactSummary result;
    const ListContact part = contacts.mid(start, count);
    result.reserve(part.size());
    for (const Contact &contact : part)
        result.append(contact);
    return result;
}
