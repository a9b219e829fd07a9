// SPDX-License-Identifier: Apache-2.0
#include "src/download/PhotoReply.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"
#include "platform/records/Loopback.h"
#include "src/photofiles/PhotoAddress.h"

#include <QNetworkAccessManager>

#include <algorithm>
#include <cstring>

namespace {

constexpr QLatin1String https("https");
constexpr qint64 readBufferBytes = 64 * 1024;

QByteArray basic(const QString &user, const QString &password)
{
    return "Basic " + (user + QLatin1Char(':') + password).toUtf8().toBase64() + "\r\n";
}

QNetworkReply::NetworkError errorOf(QAbstractSocket::SocketError error)
{
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
        return QNetworkReply::ConnectionRefusedError;
    case QAbstractSocket::RemoteHostClosedError:
        return QNetworkReply::RemoteHostClosedError;
    case QAbstractSocket::HostNotFoundError:
        return QNetworkReply::HostNotFoundError;
    case QAbstractSocket::SocketTimeoutError:
        return QNetworkReply::TimeoutError;
    case QAbstractSocket::SslHandshakeFailedError:
    case QAbstractSocket::SslInternalError:
    case QAbstractSocket::SslInvalidUserDataError:
        return QNetworkReply::SslHandshakeFailedError;
    case QAbstractSocket::ProxyAuthenticationRequiredError:
        return QNetworkReply::ProxyAuthenticationRequiredError;
    case QAbstractSocket::ProxyConnectionRefusedError:
        return QNetworkReply::ProxyConnectionRefusedError;
    case QAbstractSocket::ProxyConnectionClosedError:
        return QNetworkReply::ProxyConnectionClosedError;
    case QAbstractSocket::ProxyConnectionTimeoutError:
        return QNetworkReply::ProxyTimeoutError;
    case QAbstractSocket::ProxyNotFoundError:
        return QNetworkReply::ProxyNotFoundError;
    case QAbstractSocket::ProxyProtocolError:
        return QNetworkReply::UnknownProxyError;
    default:
        return QNetworkReply::UnknownNetworkError;
    }
}

QNetworkReply::NetworkError errorOf(int status)
{
    switch (status) {
    case 401:
        return QNetworkReply::AuthenticationRequiredError;
    case 403:
        return QNetworkReply::ContentAccessDenied;
    case 404:
        return QNetworkReply::ContentNotFoundError;
    case 405:
        return QNetworkReply::ContentOperationNotPermittedError;
    case 407:
        return QNetworkReply::ProxyAuthenticationRequiredError;
    case 410:
        return QNetworkReply::ContentGoneError;
    case 500:
        return QNetworkReply::InternalServerError;
    case 501:
        return QNetworkReply::OperationNotImplementedError;
    case 503:
        return QNetworkReply::ServiceUnavailableError;
    default:
        return status >= 500 ? QNetworkReply::UnknownServerError : QNetworkReply::UnknownContentError;
    }
}

constexpr int partialContent = 206; // which nobody asked for

bool isRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

} // namespace

PhotoReply::PhotoReply(const QNetworkRequest &request, const Limits &limits, QObject *parent)
    : QNetworkReply(parent)
    , m_limits(limits)
    , m_answer(limits.bytes)
{
    setRequest(request);
    setOperation(QNetworkAccessManager::GetOperation);
    setUrl(request.url());
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    m_silence.setSingleShot(true);
    m_silence.setInterval(limits.silence);
    connect(&m_silence, &QTimer::timeout, this, [this] { giveUp("nothing comes"); });
    m_total.setSingleShot(true);
    connect(&m_total, &QTimer::timeout, this, [this] { giveUp("it takes too long"); });
    m_total.start(limits.total);
    // Whoever asked for it must be able to connect before it ends.
    QMetaObject::invokeMethod(
        this, [this] { start(url()); }, Qt::QueuedConnection);
}

void PhotoReply::abort()
{
    end(OperationCanceledError, QStringLiteral("given up"));
}

void PhotoReply::start(const QUrl &url)
{
    if (isFinished())
        return;
    setUrl(url);
    m_answer = HttpAnswer(m_limits.bytes);
    m_socket = new QSslSocket(this);
    m_socket->setReadBufferSize(readBufferBytes);
    m_socket->setSslConfiguration(request().sslConfiguration());
    connect(m_socket, &QSslSocket::sslErrors, this, &QNetworkReply::sslErrors);
    connect(m_socket, &QSslSocket::errorOccurred, this, &PhotoReply::socketFailed);
    connect(m_socket, &QSslSocket::readyRead, this, &PhotoReply::read);
    m_silence.start();
    connectTo(url);
}

void PhotoReply::connectTo(const QUrl &url)
{
    const bool isTls = url.scheme() == https;
    const QNetworkProxy proxy = QNetworkProxyFactory::proxyForQuery(QNetworkProxyQuery(url)).value(0);
    const bool isForwarded = !isTls && (proxy.capabilities() & QNetworkProxy::CachingCapability);
    m_forwarder = isForwarded ? proxy : QNetworkProxy(QNetworkProxy::NoProxy);
    m_socket->setProxy(isForwarded ? QNetworkProxy(QNetworkProxy::NoProxy) : proxy);
    connect(m_socket, &QSslSocket::connected, this, &PhotoReply::checkPeer);
    connect(m_socket, isTls ? &QSslSocket::encrypted : &QSslSocket::connected, this, &PhotoReply::sendRequest);
    if (isTls)
        m_socket->connectToHostEncrypted(url.host(), quint16(url.port(443)));
    else if (isForwarded)
        m_socket->connectToHost(proxy.hostName(), proxy.port());
    else
        m_socket->connectToHost(url.host(), quint16(url.port(80)));
}

/// A name can lead to the phone itself as well as an address. What a proxy does with it is not seen here.
void PhotoReply::checkPeer()
{
    const bool isDirect =
        m_forwarder.type() == QNetworkProxy::NoProxy && m_socket->proxy().type() == QNetworkProxy::NoProxy;
    if (isDirect && Loopback::isHost(m_socket->peerAddress().toString()) && !Loopback::isHost(url().host()))
        giveUp("its name leads to the phone itself");
}

void PhotoReply::sendRequest()
{
    m_silence.start();
    m_socket->write(requestFor(url()));
}

QByteArray PhotoReply::requestFor(const QUrl &url) const
{
    const bool isForwarded = m_forwarder.type() != QNetworkProxy::NoProxy;
    const QUrl::FormattingOptions path = QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment;
    const QUrl::FormattingOptions whole = QUrl::RemoveUserInfo | QUrl::RemoveFragment;
    QUrl target = url;
    if (target.path().isEmpty())
        target.setPath(QStringLiteral("/"));
    const QByteArray host = target.toEncoded(QUrl::RemoveScheme | QUrl::RemoveUserInfo | QUrl::RemovePath |
                                             QUrl::RemoveQuery | QUrl::RemoveFragment);
    QByteArray text = "GET " + target.toEncoded(isForwarded ? whole : path) +
                      " HTTP/1.1\r\nHost: " + host.mid(2) + // behind "//"
                      "\r\nUser-Agent: Mozilla/5.0\r\nAccept: */*\r\nAccept-Encoding: identity\r\n"
                      "Connection: close\r\n";
    if (!url.userName().isEmpty())
        text += "Authorization: " + basic(url.userName(QUrl::FullyDecoded), url.password(QUrl::FullyDecoded));
    if (!m_forwarder.user().isEmpty())
        text += "Proxy-Authorization: " + basic(m_forwarder.user(), m_forwarder.password());
    return text + "\r\n";
}

void PhotoReply::read()
{
    m_silence.start();
    judge(m_answer.take(m_socket->readAll()));
}

void PhotoReply::judge(HttpAnswer::State state)
{
    switch (state) {
    case HttpAnswer::Reading:
        break;
    case HttpAnswer::Complete:
        complete();
        break;
    case HttpAnswer::Malformed:
        end(ProtocolFailure, QStringLiteral("the answer is not HTTP"));
        break;
    case HttpAnswer::CutShort:
        end(RemoteHostClosedError, QStringLiteral("the connection was closed"));
        break;
    case HttpAnswer::HeaderTooLarge:
        giveUp("its header is too large");
        break;
    case HttpAnswer::BodyTooLarge:
        giveUp("it is too large");
        break;
    }
}

void PhotoReply::complete()
{
    const int status = m_answer.status();
    setAttribute(QNetworkRequest::HttpStatusCodeAttribute, status);
    if (isRedirect(status) && !m_answer.location().isEmpty()) {
        follow(url().resolved(QUrl::fromEncoded(m_answer.location())));
    } else if (status >= 300 || status == partialContent) {
        end(errorOf(status), QStringLiteral("the answer is %1").arg(status));
    } else {
        m_content = m_answer.body();
        end(NoError);
    }
}

void PhotoReply::follow(const QUrl &to)
{
    ++m_redirects;
    if (const NetworkError refusal = refusalOf(to); refusal != NoError) {
        end(refusal, QStringLiteral("it is sent on to where it may not go"));
        return;
    }
    KestinLogger::debug("KestinDirectoryNetwork::finished : sent on to %1",
                        AddressText::withoutUserInfo(to.toString()));
    dropConnection();
    start(to);
}

QNetworkReply::NetworkError PhotoReply::refusalOf(const QUrl &to) const
{
    if (m_redirects > m_limits.redirects)
        return TooManyRedirectsError;
    if (!PhotoAddress::isWeb(to))
        return ProtocolUnknownError;
    const bool losesTls = url().scheme() == https && to.scheme() != https;
    const bool comesHome = Loopback::isHost(to.host()) && !Loopback::isHost(url().host());
    return losesTls || comesHome ? InsecureRedirectError : NoError;
}

void PhotoReply::socketFailed(QAbstractSocket::SocketError error)
{
    const QString text = m_socket->errorString();
    if (error != QAbstractSocket::RemoteHostClosedError) {
        end(errorOf(error), text);
        return;
    }
    const QSslSocket *const socket = m_socket;
    read();                 // what came before
    if (socket == m_socket) // there is no redirect to follow, nor an end
        judge(m_answer.end());
}

void PhotoReply::giveUp(const char *reason)
{
    KestinLogger::warning("KestinDirectoryNetwork : download of %1 given up, %2",
                          AddressText::withoutUserInfo(url().toString()), reason);
    end(OperationCanceledError, QLatin1String(reason));
}

void PhotoReply::end(NetworkError error, const QString &text)
{
    if (isFinished())
        return;
    dropConnection();
    m_silence.stop();
    m_total.stop();
    if (error != NoError)
        setError(error, text);
    setFinished(true);
    if (error != NoError)
        Q_EMIT errorOccurred(error);
    Q_EMIT finished();
}

/// The socket may be the one that is calling.
void PhotoReply::dropConnection()
{
    if (!m_socket)
        return;
    m_socket->disconnect(this);
    m_socket->abort();
    m_socket->deleteLater();
    m_socket = nullptr;
}

qint64 PhotoReply::bytesAvailable() const
{
    return m_content.size() - m_position + QNetworkReply::bytesAvailable();
}

qint64 PhotoReply::readData(char *data, qint64 maxSize)
{
    const qsizetype size = std::min(qsizetype(maxSize), m_content.size() - m_position);
    if (size == 0)
        return isFinished() ? -1 : 0;
    std::memcpy(data, m_content.constData() + m_position, size_t(size));
    m_position += size;
    return size;
}

#include "moc_PhotoReply.cpp"
