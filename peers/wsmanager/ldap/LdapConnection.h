// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/LdapMemory.h"
#include "peers/wsmanager/company/LdapServer.h"
#include "peers/wsmanager/ldap/Wakeup.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <QStringList>

#include <exception>
#include <optional>

/// What the server or the way to it answered instead of a result.
class LdapFailure : public std::exception
{
public:
    explicit LdapFailure(const QString &text)
        : m_text(text)
    {
    }
    QString text() const { return m_text; }

private:
    QString m_text;
};

/// Somebody called Wakeup::wake: nothing more is wanted.
class LdapStopped : public std::exception
{
};

/// What a search asks of the server.
struct LdapRequest
{
    QString base;
    int scope = LDAP_SCOPE_SUBTREE;
    QByteArray filter;
    QStringList attributes;
    int pageSize = 20;
    bool isPaged = true;
    int sizeLimit = 500; ///< of all pages together
};

/// One connection to a directory server. Belongs to the thread that made it. Every wait ends at once, with LdapStopped,
/// when it is woken; what was under way then has been abandoned. Only looking up the server's address and building the
/// connection are not interrupted, these last as long as the server's connectSeconds allow (twice, when the server's
/// certificate is refused). Errors are LdapFailures.
class LdapConnection
{
public:
    /// Says, before the first connection to a server with TLS, how all of them are secured: which certificates are
    /// trusted costs time to read, and is the same until the process ends. Main thread. Answers what is wrong, if
    /// anything is; so it does for a server that wants other certificates than the one before.
    [[nodiscard]] static std::optional<QString> setUpTls(const LdapServer &server);

    LdapConnection(const LdapServer &server, const Wakeup &wakeup);

    /// Connects, secures the connection and binds.
    void open();
    /// Asks for a page of results, beginning where the cookie says; the messages that answer come with wait().
    int search(const LdapRequest &request, const QByteArray &cookie);
    /// The next message that answers the operation.
    LdapMessage wait(int operation, QDeadlineTimer limit = QDeadlineTimer(QDeadlineTimer::Forever));
    /// Tells the server that nobody waits any more.
    void abandon(int operation);

    LDAP *handle() const { return m_ldap.get(); }
    /// How the open connection is secured, and by which certificate of the server, for people; empty when it is not.
    QString security() const;
    struct Result
    {
        int code;     ///< the library's
        QString text; ///< what the server says about it
    };
    /// The result in a message that ends an operation.
    static Result resultOf(LDAP *ldap, LDAPMessage *message);

private:
    void prepare();
    void connect(const QDeadlineTimer &limit);
    void startTls(const QDeadlineTimer &limit);
    std::optional<QString> refusedCertificate();
    QString certificate() const;
    void bind(const QDeadlineTimer &limit);
    int descriptor() const;
    void expect(const char *step, int operation, const QDeadlineTimer &limit);
    void check(const char *step, int rc) const;

    const LdapServer &m_server;
    const Wakeup &m_wakeup;
    LdapHandle m_ldap;
};
