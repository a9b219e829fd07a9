// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>

#include <utility>

/// Where pages far behind have begun, by id: the next that is read there enters the index at that id and does not walk
/// it from its beginning. Good as long as no row comes, goes or gets another id.
class PageStarts
{
public:
    /// Pages that begin before this are read from the beginning: it costs less than to look for a start.
    static constexpr int far = 200;

    /// Of a row: its place in the order of ids, and its id. An empty id is the beginning.
    using Start = std::pair<int, QString>;

    /// The last that is known at or before this place.
    Start before(int place) const;
    /// No other row has this id.
    void note(int place, const QString &contactId);
    void clear() { m_starts.clear(); }

private:
    static constexpr int most = 500;

    QMap<int, QString> m_starts;
};
