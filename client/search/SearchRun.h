// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/DirectoryService.h"
#include "client/bus/EventWait.h"
#include "platform/records/PlatformEvents.h"

#include <optional>

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
    /// The first `count` results in their order, and the whole record of each. Both throw what DirectoryService throws.
    ListContactSummary results(int count) const;
    ListContact contacts(int count) const;
    /// Why the results are not those of the company directory too, when they are not: it is not there, may not be used
    /// or did not answer to the end. None for a search of the phone alone.
    std::optional<CommandFailure> companyFault() const;

Q_SIGNALS:
    void announcedMore();

private:
    void noteStart(bool localOnly);
    bool take(const QString &eventName, const ListEventArgument &arguments);
    void takePacket(const ListEventArgument &arguments);
    void purge() const;

    const BusSession &m_bus;
    DirectoryService m_directory;
    EventWait m_wait;
    EventStream m_packets; ///< what the company directory answers; it comes before the end of the search is told
    QString m_searchId;
    bool m_isStarted = false;
    bool m_isLocalOnly = false;
    bool m_hadCompany = false;
    std::optional<PacketStatus> m_lastPacket;
    ListContactSummary m_announced;
};
