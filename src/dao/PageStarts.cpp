// SPDX-License-Identifier: Apache-2.0
#include "src/dao/PageStarts.h"

#include <iterator>

PageStarts::Start PageStarts::before(int place) const
{
    const auto next = m_starts.upperBound(place);
    if (next == m_starts.begin())
        return {};
    const auto start = std::prev(next);
    return {start.key(), start.value()};
}

void PageStarts::note(int place, const QString &contactId)
{
    if (m_starts.size() < most)
        m_starts.insert(place, contactId);
}
