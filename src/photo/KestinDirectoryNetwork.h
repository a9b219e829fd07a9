// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QSslConfiguration>

#include <chrono>
#include <optional>

/// Fetches pictures over HTTP and HTTPS, through the system's proxy where one is set (environment http_proxy,
/// https_proxy, no_proxy). Main thread only.
///
/// TLS 1.2 at least, trust as in QSslConfiguration::defaultConfiguration() at the first download. No cookie is kept, no
/// compressed answer unpacked. A download that breaks a limit, or that is sent on to where it may not go (another
/// scheme, from https to http, from elsewhere to the phone itself), fails.
class KestinDirectoryNetwork : public QObject
{
    Q_OBJECT

public:
    struct Limits
    {
        qint64 bytes = qint64(10) << 20;
        std::chrono::milliseconds silence = std::chrono::seconds(30); ///< without data
        std::chrono::milliseconds total = std::chrono::minutes(10);   ///< of one request, however much comes
        int redirects = 5;
    };

    KestinDirectoryNetwork();
    explicit KestinDirectoryNetwork(const Limits &limits);

    /// Starts a download. It ends in requestFinished, whose receiver deletes that reply (deleteLater), or fails, which
    /// only the log tells. Where it is sent on, the reply that is finished is another one, with the same dynamic
    /// properties: who wants to know an answer again sets one. In either case the reply returned here is destroyed at
    /// the end. Null, after a warning, when the scheme is neither http nor https.
    QNetworkReply *get(const QUrl &url);

Q_SIGNALS:
    void requestFinished(QNetworkReply *reply);
    /// Never emitted.
    void networkError(const QString &code, const QString &text);

public Q_SLOTS:
    void finished(QNetworkReply *reply);
    void socketSslError(QNetworkReply *reply, const QList<QSslError> &errors);

private:
    QNetworkAccessManager &manager();
    QNetworkRequest requestFor(const QUrl &url) const;
    QNetworkReply *start(const QUrl &url, int redirects);
    void checkSize(QNetworkReply *reply);
    void follow(QNetworkReply *reply, const QUrl &to);
    QNetworkReply::NetworkError refusalOf(const QUrl &from, const QUrl &to, int redirects) const;
    static void fail(QNetworkReply *reply, QNetworkReply::NetworkError error);
    static void giveUp(QNetworkReply *reply, const char *reason);

    Limits m_limits;
    // Made at the first download: the TLS library alone takes 4 MB of memory, and there may never be one.
    std::optional<QSslConfiguration> m_tls;
    std::optional<QNetworkAccessManager> m_manager;
};
