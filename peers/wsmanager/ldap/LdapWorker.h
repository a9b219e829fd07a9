// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectorySearch.h"
#include "peers/wsmanager/ldap/LdapConnection.h"

#include <QSemaphore>
#include <QThread>

#include <optional>

/// One search on a server, or a look whether it can be reached, in a thread and on a connection of its own: a server
/// that is slow keeps only this search waiting, and a phone holds no connection open while nobody searches.
///
/// The object belongs to the main thread; its signals come queued.
class LdapWorker : public QThread
{
    Q_OBJECT

public:
    /// Without a request it connects, tells and ends.
    LdapWorker(const LdapServer &server, const std::optional<LdapRequest> &request);

    /// Lets it gather another packet. Main thread.
    void wantPacket() { m_wanted.release(); }
    /// Lets it end, abandoning what is under way; nothing but the thread's end is told after that. Main thread.
    void cancel();

Q_SIGNALS:
    void opened();
    void packet(const DirectoryEntries &entries, PacketStatus status);
    /// The server cannot be reached, refuses the bind, or the connection has been lost, or the library refuses the
    /// request. Comes before the last packet.
    void failed(const QString &text);

protected:
    void run() override;

private:
    void serve(LdapConnection &connection);
    PacketStatus gather(LdapConnection &connection, DirectoryEntries &entries);
    PacketStatus takeResult(LDAP *ldap, LDAPMessage *message);
    bool refusesPages(LDAP *ldap, LDAPMessage *message) const;

    const LdapServer m_server;
    Wakeup m_wakeup;
    QSemaphore m_wanted;

    // The thread's own.
    std::optional<LdapRequest> m_request;
    int m_left;
    int m_operation = 0; // 0: none is under way
    QByteArray m_cookie;
    std::optional<DirectoryEntry> m_next; // arrived beyond the end of the packet
};
