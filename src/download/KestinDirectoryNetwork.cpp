// SPDX-License-Identifier: Apache-2.0
#include "src/download/KestinDirectoryNetwork.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"
#include "src/photofiles/PhotoAddress.h"

#include <QMetaEnum>

namespace {

/// Answers with replies that keep the limits: those of the library hold any length of headers, and all that stands
/// behind a redirect.
class PhotoAccessManager : public QNetworkAccessManager
{
public:
    explicit PhotoAccessManager(const PhotoReply::Limits &limits)
        : m_limits(limits)
    {
    }

protected:
    QNetworkReply *createRequest(Operation, const QNetworkRequest &request, QIODevice *) override
    {
        return new PhotoReply(request, m_limits, this);
    }

private:
    PhotoReply::Limits m_limits;
};

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
    m_manager = std::make_unique<PhotoAccessManager>(m_limits);
    connect(m_manager.get(), &QNetworkAccessManager::sslErrors, this, &KestinDirectoryNetwork::socketSslError);
    connect(m_manager.get(), &QNetworkAccessManager::finished, this, &KestinDirectoryNetwork::finished);
    return *m_manager;
}

QNetworkReply *KestinDirectoryNetwork::get(const QUrl &url)
{
    KestinLogger::debug("GET %1", AddressText::withoutUserInfo(url.toString()));
    if (!PhotoAddress::isWeb(url)) {
        KestinLogger::warning("KestinDirectoryNetwork::get : neither http nor https: %1",
                              AddressText::withoutUserInfo(url.toString()));
        return nullptr;
    }
    QNetworkAccessManager &network = manager();
    QNetworkRequest request(url);
    request.setSslConfiguration(*m_tls);
    return network.get(request);
}

void KestinDirectoryNetwork::giveUp(QNetworkReply *reply)
{
    if (!reply)
        return;
    KestinLogger::debug("KestinDirectoryNetwork : download of %1 given up, nobody wants it any more",
                        AddressText::withoutUserInfo(reply->url().toString()));
    disconnect(reply, &QNetworkReply::finished, nullptr, nullptr);
    reply->abort();
    reply->deleteLater();
}

void KestinDirectoryNetwork::finished(QNetworkReply *reply)
{
    KestinLogger::debug("KestinDirectoryNetwork::finished : request finished");
    if (!reply) {
        KestinLogger::debug("KestinDirectoryNetwork::finished : finished ignored");
    } else if (const QNetworkReply::NetworkError error = reply->error(); error == QNetworkReply::NoError) {
        KestinLogger::debug("KestinDirectoryNetwork::finished : GET request successful");
        Q_EMIT requestFinished(reply);
    } else {
        KestinLogger::error("KestinDirectoryNetwork::finished : GET request failed : (%1) %2", int(error),
                            nameOf(error));
        reply->deleteLater();
    }
}

void KestinDirectoryNetwork::socketSslError(QNetworkReply *, const QList<QSslError> &errors)
{
    // The text is what those who watch the log wait for; nothing is trusted or continued here.
    KestinLogger::debug(
        "KestinDirectoryNetwork::socketSslError : sslError, but certificate is trusted, continue anyway");
    if (!errors.isEmpty())
        KestinLogger::debug("KestinDirectoryNetwork::socketSslError : %1", errors.first().errorString());
}

#include "moc_KestinDirectoryNetwork.cpp"
