// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/download/PhotoReply.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QSslConfiguration>

#include <memory>
#include <optional>

/// Fetches pictures over HTTP and HTTPS, through the system's proxy where that is set (environment http_proxy,
/// https_proxy, no_proxy).
///
/// TLS 1.2 at least, trust as in QSslConfiguration::defaultConfiguration() at the first download. No cookie is kept, no
/// compressed answer unpacked. A download that breaks a limit, or that is sent on to where it may not go (another
/// scheme, from https to http, from elsewhere to the phone itself), fails, and so does a download whose host is a name
/// for the phone itself.
class KestinDirectoryNetwork : public QObject
{
    Q_OBJECT

public:
    using Limits = PhotoReply::Limits;

    KestinDirectoryNetwork();
    explicit KestinDirectoryNetwork(const Limits &limits);

    /// Starts a download. It ends in requestFinished, whose receiver deletes the reply (deleteLater), or fails, which
    /// only the log tells; in either case the reply is destroyed at the end. Null, after a warning, when the scheme is
    /// neither http nor https.
    QNetworkReply *get(const QUrl &url);

    /// Ends a download that nobody wants any more: no signal and no error line come of it. Null is ignored.
    void giveUp(QNetworkReply *reply);

Q_SIGNALS:
    void requestFinished(QNetworkReply *reply);
    /// Never emitted.
    void networkError(const QString &code, const QString &text);

public Q_SLOTS:
    void finished(QNetworkReply *reply);
    void socketSslError(QNetworkReply *reply, const QList<QSslError> &errors);

private:
    QNetworkAccessManager &manager();

    Limits m_limits;
    // Made at the first download: the TLS library alone takes 4 MB of memory, and there may never be a download.
    std::optional<QSslConfiguration> m_tls;
    std::unique_ptr<QNetworkAccessManager> m_manager;
};
