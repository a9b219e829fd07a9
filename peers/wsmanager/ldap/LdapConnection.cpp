// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/ldap/LdapConnection.h"

#include "peers/wsmanager/ldap/ServerCertificate.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/RegularFile.h"

#include <algorithm>

#include <fcntl.h>
#include <sys/time.h>

namespace {

QString errorText(int rc, const char *details = nullptr)
{
    const QString text = QString::fromUtf8(ldap_err2string(rc));
    return details && *details ? QStringLiteral("%1 (%2)").arg(text, QString::fromUtf8(details)) : text;
}

/// A text among the library's options.
QByteArray optionOf(LDAP *ldap, int option)
{
    char *text = nullptr;
    ldap_get_option(ldap, option, &text);
    const LdapText owned(text);
    return QByteArray(text);
}

/// A context of the connection's own, or, without one, for all connections. It is made when the options are set: those
/// that come later do not count in it.
bool makeTlsContext(LDAP *ldap, int certificates, const QByteArray &ciphers)
{
    const int oldest = LDAP_OPT_X_TLS_PROTOCOL_TLS1_2;
    const int isServer = 0;
    ldap_set_option(ldap, LDAP_OPT_X_TLS_REQUIRE_CERT, &certificates);
    ldap_set_option(ldap, LDAP_OPT_X_TLS_PROTOCOL_MIN, &oldest);
    if (!ciphers.isEmpty())
        ldap_set_option(ldap, LDAP_OPT_X_TLS_CIPHER_SUITE, ciphers.constData());
    return ldap_set_option(ldap, LDAP_OPT_X_TLS_NEWCTX, &isServer) == LDAP_OPT_SUCCESS;
}

QString trustedFile()
{
    return QFile::decodeName(optionOf(nullptr, LDAP_OPT_X_TLS_CACERTFILE));
}

} // namespace

std::optional<QString> LdapConnection::setUpTls(const LdapServer &server)
{
    static std::optional<QString> trusted; // what other threads are connecting with cannot be changed
    if (trusted && *trusted != server.caFile)
        return QStringLiteral("another caFile needs a new start of this program");
    if (trusted)
        return std::nullopt;
    QByteArray ciphers = optionOf(nullptr, LDAP_OPT_X_TLS_CIPHER_SUITE);
    // GnuTLS does not look at the oldest protocol.
    if (optionOf(nullptr, LDAP_OPT_X_TLS_PACKAGE) == "GnuTLS")
        ciphers = (ciphers.isEmpty() ? QByteArray("NORMAL") : ciphers) + ":-VERS-SSL3.0:-VERS-TLS1.0:-VERS-TLS1.1";
    const QByteArray former = optionOf(nullptr, LDAP_OPT_X_TLS_CACERTFILE);
    if (QFile certificates(server.caFile); !server.caFile.isEmpty()) {
        if (const auto reason = RegularFile::open(certificates))
            return QStringLiteral("the certificates in \"%1\" cannot be used: %2").arg(server.caFile, *reason);
        ldap_set_option(nullptr, LDAP_OPT_X_TLS_CACERTFILE, QFile::encodeName(server.caFile).constData());
    }
    if (makeTlsContext(nullptr, LDAP_OPT_X_TLS_DEMAND, ciphers)) {
        trusted = server.caFile;
        return std::nullopt;
    }
    const QString unusable = trustedFile();
    ldap_set_option(nullptr, LDAP_OPT_X_TLS_CACERTFILE, former.isEmpty() ? nullptr : former.constData());
    return QStringLiteral("the certificates in \"%1\" cannot be used").arg(unusable);
}

LdapConnection::LdapConnection(const LdapServer &server, const Wakeup &wakeup)
    : m_server(server)
    , m_wakeup(wakeup)
{
}

void LdapConnection::open()
{
    prepare();
    const QDeadlineTimer limit(m_server.connectSeconds * 1000);
    try {
        connect(limit);
    } catch (const LdapFailure &) {
        if (!m_server.usesTls() || limit.hasExpired() || m_wakeup.isAwake())
            throw;
        if (const auto reason = refusedCertificate())
            throw LdapFailure(*reason);
        throw;
    }
    bind(limit);
    // From here on no read waits for the rest of a message that does not come; wait() does, and can be woken.
    fcntl(descriptor(), F_SETFL, fcntl(descriptor(), F_GETFL) | O_NONBLOCK);
}

void LdapConnection::prepare()
{
    LDAP *ldap = nullptr;
    const int rc = ldap_initialize(&ldap, m_server.url.toUtf8().constData());
    m_ldap.reset(ldap);
    if (rc != LDAP_SUCCESS)
        throw LdapFailure(QStringLiteral("\"%1\" is no address of a server: %2").arg(m_server.url, errorText(rc)));
    const int version = LDAP_VERSION3;
    const timeval limit{m_server.connectSeconds, 0};
    const unsigned int userTimeout = unsigned(m_server.connectSeconds) * 1000;
    ldap_set_option(ldap, LDAP_OPT_PROTOCOL_VERSION, &version);
    ldap_set_option(ldap, LDAP_OPT_NETWORK_TIMEOUT, &limit);
    ldap_set_option(ldap, LDAP_OPT_TCP_USER_TIMEOUT, &userTimeout);
    // Following a referral would bind anew to a server nobody named, and wait for it.
    ldap_set_option(ldap, LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
}

void LdapConnection::connect(const QDeadlineTimer &limit)
{
    if (m_server.usesStartTls)
        startTls(limit);
    else
        check("connect", ldap_connect(m_ldap.get()));
}

/// The library does not say why a connection with TLS failed. If it succeeds when any certificate will do, and nothing
/// is sent on it, it was the certificate. Nothing when it was not.
std::optional<QString> LdapConnection::refusedCertificate()
{
    try {
        prepare();
        makeTlsContext(m_ldap.get(), LDAP_OPT_X_TLS_NEVER, optionOf(nullptr, LDAP_OPT_X_TLS_CIPHER_SUITE));
        connect(QDeadlineTimer(m_server.connectSeconds * 1000));
    } catch (const LdapFailure &) {
        return std::nullopt;
    }
    return QStringLiteral("the certificate of %1 is refused: it is out of date, or for another host, or nobody in "
                          "\"%2\" has signed it (%3)")
        .arg(m_server.url, trustedFile(), certificate());
}

QString LdapConnection::security() const
{
    const QByteArray version = m_server.usesTls() ? optionOf(m_ldap.get(), LDAP_OPT_X_TLS_VERSION) : QByteArray();
    return version.isEmpty() ? QString() : QStringLiteral("%1, %2").arg(QString::fromUtf8(version), certificate());
}

QString LdapConnection::certificate() const
{
    berval der{0, nullptr};
    ldap_get_option(m_ldap.get(), LDAP_OPT_X_TLS_PEERCERT, &der);
    const LdapText owned(der.bv_val);
    const QString text = ServerCertificate::textOf(QByteArray(der.bv_val, qsizetype(der.bv_len)));
    return text.isEmpty() ? QStringLiteral("a certificate that cannot be read") : text;
}

void LdapConnection::startTls(const QDeadlineTimer &limit)
{
    int operation = 0;
    check("connect", ldap_start_tls(m_ldap.get(), nullptr, nullptr, &operation));
    expect("start TLS", operation, limit);
    check("start TLS", ldap_install_tls(m_ldap.get()));
}

void LdapConnection::bind(const QDeadlineTimer &limit)
{
    QByteArray secret = m_server.secret;
    const berval credentials{ber_len_t(secret.size()), secret.data()};
    int operation = 0;
    check("connect", ldap_sasl_bind(m_ldap.get(), m_server.bindName.toUtf8().constData(), LDAP_SASL_SIMPLE,
                                    const_cast<berval *>(&credentials), nullptr, nullptr, &operation));
    expect("bind", operation, limit);
}

int LdapConnection::search(const LdapRequest &request, const QByteArray &cookie)
{
    QList<QByteArray> names;
    for (const QString &attribute : request.attributes)
        names.append(attribute.toUtf8());
    QList<char *> attributes;
    for (QByteArray &name : names)
        attributes.append(name.data());
    attributes.append(nullptr);

    QByteArray copy = cookie;
    berval position{ber_len_t(copy.size()), copy.data()};
    LDAPControl *paging = nullptr;
    check("search", ldap_create_page_control(m_ldap.get(), request.pageSize, &position, 0, &paging));
    const LdapControl owned(paging);
    LDAPControl *controls[]{request.isPaged ? paging : nullptr, nullptr};
    int operation = 0;
    check("search",
          ldap_search_ext(m_ldap.get(), request.base.toUtf8().constData(), request.scope, request.filter.constData(),
                          attributes.data(), 0, controls, nullptr, nullptr, request.sizeLimit, &operation));
    KestinLogger::debug("The directory server is asked for %1 below \"%2\"", QString::fromUtf8(request.filter),
                        request.base);
    return operation;
}

LdapMessage LdapConnection::wait(int operation, QDeadlineTimer limit)
{
    while (true) {
        timeval noTime{0, 0};
        LDAPMessage *message = nullptr;
        const int type = ldap_result(m_ldap.get(), operation, LDAP_MSG_ONE, &noTime, &message);
        if (type > 0)
            return LdapMessage(message);
        if (type < 0)
            check("wait for an answer", -1);
        const int milliseconds = limit.isForever() ? -1 : int(limit.remainingTime());
        switch (m_wakeup.waitFor(descriptor(), milliseconds)) {
        case Wakeup::Event::Readable:
            break;
        case Wakeup::Event::Woken:
            abandon(operation);
            throw LdapStopped();
        case Wakeup::Event::TimeOut:
            throw LdapFailure(QStringLiteral("the server does not answer"));
        }
    }
}

void LdapConnection::abandon(int operation)
{
    ldap_abandon_ext(m_ldap.get(), operation, nullptr, nullptr);
}

int LdapConnection::descriptor() const
{
    int descriptor = -1;
    ldap_get_option(m_ldap.get(), LDAP_OPT_DESC, &descriptor);
    return descriptor;
}

LdapConnection::Result LdapConnection::resultOf(LDAP *ldap, LDAPMessage *message)
{
    int result = LDAP_SUCCESS;
    char *details = nullptr;
    const int rc = ldap_parse_result(ldap, message, &result, nullptr, &details, nullptr, nullptr, 0);
    const LdapText owned(details);
    if (rc != LDAP_SUCCESS)
        result = rc;
    return {result, errorText(result, details)};
}

void LdapConnection::expect(const char *step, int operation, const QDeadlineTimer &limit)
{
    const LdapMessage message = wait(operation, limit);
    const Result result = resultOf(m_ldap.get(), message.get());
    if (result.code != LDAP_SUCCESS)
        throw LdapFailure(QStringLiteral("%1: %2").arg(QLatin1String(step), result.text));
}

void LdapConnection::check(const char *step, int rc) const
{
    if (rc == LDAP_SUCCESS)
        return;
    int error = rc;
    const QByteArray details = optionOf(m_ldap.get(), LDAP_OPT_DIAGNOSTIC_MESSAGE);
    if (rc < 0)
        ldap_get_option(m_ldap.get(), LDAP_OPT_RESULT_CODE, &error);
    throw LdapFailure(QStringLiteral("%1: %2").arg(QLatin1String(step), errorText(error, details.constData())));
}
