// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectorySearch.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>

/// A search that somebody on the bus has started: answers each request for a packet in time, whatever the directory
/// does. The first packet is gathered before it is asked for. Deleting it stops the search. Main thread only.
class RunningSearch : public QObject
{
    Q_OBJECT

public:
    struct Times
    {
        std::chrono::milliseconds limit; ///< after which a request is answered with TimedOut and no entries
        std::chrono::milliseconds delay; ///< by which each answer is held back
    };
    /// A search that nobody asks for this long is of no use to anybody any more.
    static constexpr std::chrono::seconds forgottenAfter{60};

    explicit RunningSearch(const Times &times);

    /// Once; may come after the first request.
    void begin(std::unique_ptr<DirectorySearch> search);
    /// Asks for a packet; answered once, never during the call. A request while another waits changes nothing.
    void ask();

Q_SIGNALS:
    /// The search is over unless the status is More.
    void answered(const DirectoryEntries &entries, PacketStatus status);
    /// The directory did not answer within the limit; comes before the answer.
    void silent();
    void forgotten();

private:
    struct Packet
    {
        DirectoryEntries entries;
        PacketStatus status;
    };

    void fetch();
    void keep(const DirectoryEntries &entries, PacketStatus status);
    void answer();
    void giveUp();

    const Times m_times;
    std::unique_ptr<DirectorySearch> m_search;
    std::optional<Packet> m_packet;
    bool m_isFetching = false;
    bool m_isAsked = false;
    QTimer m_limit;
    QTimer m_delay;
    QTimer m_idle;
};
