// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/DirectoryService.h"
#include "client/bus/EventWait.h"

/// One search of the directory, from its start to its purge. The directory runs one at a time: a search that somebody
/// else starts meanwhile takes the place of this one, which is not told and ends with the limit.
class SearchRun : public QObject
{
    Q_OBJECT

public:
    /// Throws CommandFailure when the bus cannot be reached.
    explicit SearchRun(const BusSession &bus);
    /// Purges the search.
    ~SearchRun() override;

    /// One of them, once. `announced`: how many contacts are told as they come. The number has to be in canonical form.
    /// `localOnly`: the company directory is not asked. Throw what DirectoryService throws.
    void startByName(const QString &name, int announced, bool localOnly);
    void startByNumber(const QString &number, bool localOnly);

    /// Until the search is completed, `interrupt` or the limit of the session. Throws as EventWait::run does.
    EventWait::End wait();
    void interrupt() { m_wait.interrupt(); }

    /// What was told as it came; all that there is when the wait has not ended with Done.
    const ListContactSummary &announced() const { return m_announced; }
    /// After a search by number: the contact it belongs to, an empty one when it is nobody's.
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
