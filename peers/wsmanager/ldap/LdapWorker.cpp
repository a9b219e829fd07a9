// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/ldap/LdapWorker.h"

#include "peers/wsmanager/company/DnText.h"
#include "platform/framework/KestinLogger.h"

#include <utility>

namespace {

DirectoryEntry entryOf(LDAP *ldap, LDAPMessage *message)
{
    DirectoryEntry entry;
    const LdapText dn(ldap_get_dn(ldap, message));
    entry.dn = DnText::normalized(dn.get());
    if (entry.dn.isEmpty())
        KestinLogger::info("An entry is left out: its name \"%1\" is none", QString::fromUtf8(dn.get()));
    BerElement *walk = nullptr;
    LdapText name(ldap_first_attribute(ldap, message, &walk));
    const LdapPosition position(walk);
    for (; name; name.reset(ldap_next_attribute(ldap, message, walk))) {
        const LdapValues values(ldap_get_values_len(ldap, message, name.get()));
        for (berval **value = values.get(); value && *value; ++value)
            entry.add(QString::fromUtf8(name.get()), QString::fromUtf8((*value)->bv_val, qsizetype((*value)->bv_len)));
    }
    return entry;
}

/// Where the next page begins; empty when there is none, or when the server knows no pages.
QByteArray cookieOf(LDAP *ldap, LDAPMessage *message)
{
    LDAPControl **controls = nullptr;
    const int rc = ldap_parse_result(ldap, message, nullptr, nullptr, nullptr, nullptr, &controls, 0);
    const LdapControls owned(controls);
    if (rc != LDAP_SUCCESS)
        return QByteArray();
    LDAPControl *paging = ldap_control_find(LDAP_CONTROL_PAGEDRESULTS, controls, nullptr);
    ber_int_t estimate = 0;
    berval cookie{0, nullptr};
    const bool isPage = paging && ldap_parse_pageresponse_control(ldap, paging, &estimate, &cookie) == LDAP_SUCCESS;
    const LdapText text(cookie.bv_val);
    return isPage ? QByteArray(cookie.bv_val, qsizetype(cookie.bv_len)) : QByteArray();
}

} // namespace

LdapWorker::LdapWorker(const LdapServer &server, const std::optional<LdapRequest> &request)
    : m_server(server)
    , m_request(request)
    , m_left(request ? request->sizeLimit : 0)
{
}

void LdapWorker::cancel()
{
    m_wakeup.wake();
    m_wanted.release();
}

void LdapWorker::run()
{
    LdapConnection connection(m_server, m_wakeup);
    try {
        connection.open();
        Q_EMIT opened();
        if (m_request)
            serve(connection);
    } catch (const LdapFailure &failure) {
        Q_EMIT failed(failure.text());
        Q_EMIT packet({}, PacketStatus::TimedOut);
    } catch (const LdapStopped &) {
        KestinLogger::debug("A search has been abandoned");
    }
}

void LdapWorker::serve(LdapConnection &connection)
{
    PacketStatus status = PacketStatus::More;
    while (status == PacketStatus::More) {
        m_wanted.acquire();
        if (m_wakeup.isAwake())
            return;
        DirectoryEntries entries;
        status = gather(connection, entries);
        Q_EMIT packet(entries, status);
    }
}

PacketStatus LdapWorker::gather(LdapConnection &connection, DirectoryEntries &entries)
{
    if (m_next)
        entries.append(*std::exchange(m_next, std::nullopt));
    if (m_operation == 0)
        m_operation = connection.search(*m_request, m_cookie);
    while (true) {
        const LdapMessage message = connection.wait(m_operation);
        const int type = ldap_msgtype(message.get());
        if (type == LDAP_RES_SEARCH_RESULT) {
            if (!entries.isEmpty() || !refusesPages(connection.handle(), message.get()))
                return takeResult(connection.handle(), message.get());
            m_request->isPaged = false;
            m_operation = connection.search(*m_request, m_cookie);
        }
        if (type != LDAP_RES_SEARCH_ENTRY)
            continue;
        if (m_left-- == 0) {
            connection.abandon(m_operation);
            return PacketStatus::Finished;
        }
        DirectoryEntry entry = entryOf(connection.handle(), message.get());
        if (entry.dn.isEmpty()) // nobody could ask for it again
            continue;
        // The server knows no pages and sends on: the rest waits until it is asked for.
        if (entries.size() == m_request->pageSize) {
            m_next = std::move(entry);
            return PacketStatus::More;
        }
        entries.append(std::move(entry));
    }
}

bool LdapWorker::refusesPages(LDAP *ldap, LDAPMessage *message) const
{
    if (!m_request->isPaged || !m_cookie.isEmpty())
        return false;
    // An administrator may have forbidden pages, and some servers refuse what they do not know.
    const int result = LdapConnection::resultOf(ldap, message).code;
    return result == LDAP_ADMINLIMIT_EXCEEDED || result == LDAP_UNWILLING_TO_PERFORM ||
           result == LDAP_UNAVAILABLE_CRITICAL_EXTENSION;
}

PacketStatus LdapWorker::takeResult(LDAP *ldap, LDAPMessage *message)
{
    m_operation = 0;
    const auto [code, text] = LdapConnection::resultOf(ldap, message);
    switch (code) {
    case LDAP_SUCCESS:
        m_cookie = cookieOf(ldap, message);
        return m_cookie.isEmpty() || m_left == 0 ? PacketStatus::Finished : PacketStatus::More;
    case LDAP_SIZELIMIT_EXCEEDED:
    case LDAP_ADMINLIMIT_EXCEEDED:
        KestinLogger::info("The directory server gives no more results: %1", text);
        return PacketStatus::Finished;
    case LDAP_NO_SUCH_OBJECT:
    case LDAP_INVALID_DN_SYNTAX:
        // Somebody asked for an entry that is gone, which is an answer.
        if (m_request->scope == LDAP_SCOPE_BASE)
            return PacketStatus::Finished;
        [[fallthrough]];
    default:
        KestinLogger::warning("The directory server refuses a search below \"%1\": %2", m_request->base, text);
        return PacketStatus::TimedOut;
    }
}

#include "moc_LdapWorker.cpp"
