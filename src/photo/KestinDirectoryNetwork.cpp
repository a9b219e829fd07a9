// SPDX-License-Identifier: Apache-2.0
#include "src/photo/KestinDirectoryNetwork.h"

#include "platform/framework/KestinLogger.h"
#include "src/photo/PhotoAddress.h"

#include <QMetaEnum>
#include <QTimer>

#include <algorithm>

namespace {

/// Reading stops some way before the buffer is full; with this much more it goes past the limit, where it is noticed.
constexpr qint64 bufferMargin = 1 << 20;
/// How often a download has been sent on so far.
constexpr QNetworkRequest::Attribute redirectsAttribute = QNetworkRequest::User;

QString nameOf(QNetworkReply::NetworkError error)
{
    const char *name = QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(error);
    return QLatin1String(name ? name : "UnknownError");
}

} // namespace

KestinDirectoryNetwork::KestinDirectoryNetwork()
    : KestinDirectoryNetwork(Limits())
{
}

KestinDirectoryNetwork::KestinDirectoryNetwork(const Limits &limits)
    : m_limits(limits)
{
    KestinLogger::debug("KestinDirectoryNetwork");
}

QNetworkAccessManager &KestinDirectoryNetwork::manager()
{
    if (m_manager)
        return *m_manager;
    m_tls = QSslConfiguration::defaultConfiguration();
    m_tls->setProtocol(QSsl::TlsV1_2OrLater);
    m_manager.emplace();
    connect(&*m_manager, &QNetworkAccessManager::sslErrors, this, &KestinDirectoryNetwork::socketSslError);
    connect(&*m_manager, &QNetworkAccessManager::finished, this, &KestinDirectoryNetwork::finished);
    return *m_manager;
}

QNetworkReply *KestinDirectoryNetwork::get(const QUrl &url)
{
    KestinLogger::debug("GET %1", url.toString());
    if (PhotoAddress::isWeb(url))
        return start(url, 0);
    KestinLogger::warning("KestinDirectoryNetwork::get : neither http nor https: %1", url.toString());
    return nullptr;
}

QNetworkReply *KestinDirectoryNetwork::start(const QUrl &url, int redirects)
{
    QNetworkAccessManager &network = manager();
    QNetworkRequest request = requestFor(url);
    request.setAttribute(redirectsAttribute, redirects);
    QNetworkReply *reply = network.get(request);
    reply->setReadBufferSize(m_limits.bytes + bufferMargin);
    connect(reply, &QNetworkReply::metaDataChanged, this, [this, reply] { checkSize(reply); });
    connect(reply, &QNetworkReply::readyRead, this, [this, reply] { checkSize(reply); });
    QTimer::singleShot(m_limits.total, reply, [reply] { giveUp(reply, "it takes too long"); });
    return reply;
}

QNetworkRequest KestinDirectoryNetwork::requestFor(const QUrl &url) const
{
    QNetworkRequest request(url);
    request.setSslConfiguration(*m_tls);
    request.setTransferTimeout(int(m_limits.silence.count()));
    // The library would send the next request before it could be stopped.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // One byte received is one byte kept: what comes packed all the same is no picture.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false); // nothing to win for single pictures
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    return request;
}

void KestinDirectoryNetwork::checkSize(QNetworkReply *reply)
{
    const qint64 announced = reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (std::max(announced, reply->bytesAvailable()) > m_limits.bytes)
        giveUp(reply, "it is too large");
}

void KestinDirectoryNetwork::giveUp(QNetworkReply *reply, const char *reason)
{
    if (reply->isFinished())
        return;
    KestinLogger::warning("KestinDirectoryNetwork : download of %1 given up, %2", reply->url().toString(), reason);
    reply->abort();
}

void KestinDirectoryNetwork::finished(QNetworkReply *reply)
{
    KestinLogger::debug("KestinDirectoryNetwork::finished : request finished");
    if (!reply) {
        KestinLogger::debug("KestinDirectoryNetwork::finished : finished ignored");
        return;
    }
    const QUrl target = reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    if (reply->error() != QNetworkReply::NoError) {
        fail(reply, reply->error());
    } else if (!target.isEmpty()) {
        follow(reply, reply->url().resolved(target));
    } else {
        KestinLogger::debug("KestinDirectoryNetwork::finished : GET request successful");
        Q_EMIT requestFinished(reply);
    }
}

void KestinDirectoryNetwork::follow(QNetworkReply *reply, const QUrl &to)
{
    const int redirects = reply->request().attribute(redirectsAttribute).toInt() + 1;
    const QNetworkReply::NetworkError refusal = refusalOf(reply->url(), to, redirects);
    if (refusal != QNetworkReply::NoError) {
        fail(reply, refusal);
        return;
    }
    KestinLogger::debug("KestinDirectoryNetwork::finished : sent on to %1", to.toString());
    reply->close(); // its content is of no interest
    QNetworkReply *next = start(to, redirects);
    const QList<QByteArray> properties = reply->dynamicPropertyNames();
    for (const QByteArray &property : properties)
        next->setProperty(property, reply->property(property));
    connect(next, &QObject::destroyed, reply, &QObject::deleteLater);
}

QNetworkReply::NetworkError KestinDirectoryNetwork::refusalOf(const QUrl &from, const QUrl &to, int redirects) const
{
    if (redirects > m_limits.redirects)
        return QNetworkReply::TooManyRedirectsError;
    if (!PhotoAddress::isWeb(to))
        return QNetworkReply::ProtocolUnknownError;
    const bool losesTls = from.scheme() == QLatin1String("https") && to.scheme() != from.scheme();
    const bool comesHome = PhotoAddress::isLoopback(to.host()) && !PhotoAddress::isLoopback(from.host());
    return losesTls || comesHome ? QNetworkReply::InsecureRedirectError : QNetworkReply::NoError;
}

void KestinDirectoryNetwork::fail(QNetworkReply *reply, QNetworkReply::NetworkError error)
{
    KestinLogger::error("KestinDirectoryNetwork::finished : GET request failed : (%1) %2", int(error), nameOf(error));
    reply->deleteLater();
}

void KestinDirectoryNetwork::socketSslError(QNetworkReply *, const QList<QSslError> &errors)
{
    // The text is what those who watch the log wait for; nothing is trusted or continued here.
    KestinLogger::debug(
        "KestinDirectoryNetwork::socketSslError : sslError, but certificate is trusted, continue anyway");
    if (!errors.isEmpty())
        KestinLogger::debug("KestinDirectoryNetwork::socketSslError : %1", errors.first().errorString());
}
