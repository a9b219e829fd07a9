// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/DirectoryService.h"
#include "client/bus/EventWait.h"

/// A search of the directory, from its start to its purge. The directory runs a single search at a time. A search that
/// somebody else starts meanwhile takes the place of this search, which is not told and ends with the limit.
class SearchRun : public QObject
{
    Q_OBJECT

public:
    /// Throws CommandFailure when the bus cannot be reached.
    explicit SearchRun(const BusSession &bus);
    /// Purges the search.
    ~SearchRun() override;

    /// Call either of these two, a single time. `announced` is how many contacts are told as they come. The number has
    /// to be in canonical form. With `localOnly` the company directory is not asked. Both throw what DirectoryService
    /// throws.
    void startByName(const QString &name, int announced, bool localOnly);
    void startByNumber(const QString &number, bool localOnly);

    /// Waits until the search is completed, until `interrupt` or for the limit of the session. Throws as EventWait::run
    /// does.
    EventWait::End wait();
    void interrupt() { m_wait.interrupt(); }

    /// The contacts told as they came. There is nothing else when the wait has not ended with Done.
    const ListContactSummary &announced() const { return m_announced; }
    /// The contact to which the number of a search belongs. An empty contact when the number is nobody's.
    const Contact &match() const { return m_match; }
    /// The first `count` results in their order. Throws what DirectoryService throws.
    ListContactSummary results(int count) const;

Q_SIGNALS:
    void announcedMore();

private:
    bool take(const QString &eventName, const ListEventArgument &arguments);
    void purge() const;

    DirectoryService m_directory;
    EventWait m_wait;
    QString m_searchId;
    bool m_isStarted = false;
    ListContactSummary m_announced;
    Contact m_match;
};
