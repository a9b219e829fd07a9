// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/download/HttpAnswer.h"
#include "src/fields/PhotoRules.h"

#include <QNetworkProxy>
#include <QNetworkReply>
#include <QSslSocket>
#include <QTimer>

#include <chrono>

/// One download from its first request to the end of the last redirect, within limits; its content can be read when it
/// has finished. Each request has a connection of its own.
class PhotoReply : public QNetworkReply
{
    Q_OBJECT

public:
    struct Limits
    {
        qint64 bytes = PhotoRules::maxBytes;
        std::chrono::milliseconds silence = std::chrono::seconds(30); ///< without data
        std::chrono::milliseconds total = std::chrono::minutes(10);   ///< with all redirects, however much comes
        int redirects = 5;
    };

    /// Begins as soon as the event loop runs.
    PhotoReply(const QNetworkRequest &request, const Limits &limits, QObject *parent);

    void abort() override;
    qint64 bytesAvailable() const override;
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override;

private:
    void start(const QUrl &url);
    void connectTo(const QUrl &url);
    void checkPeer();
    void sendRequest();
    QByteArray requestFor(const QUrl &url) const;
    void read();
    void judge(HttpAnswer::State state);
    void complete();
    void follow(const QUrl &to);
    NetworkError refusalOf(const QUrl &to) const;
    void socketFailed(QAbstractSocket::SocketError error);
    void giveUp(const char *reason);
    void end(NetworkError error, const QString &text = QString());
    void dropConnection();

    const Limits m_limits;
    QTimer m_silence;
    QTimer m_total;
    QNetworkProxy m_forwarder; ///< takes the request in the server's place; no proxy when it goes to the server
    QSslSocket *m_socket = nullptr;
    HttpAnswer m_answer;
    int m_redirects = 0;
    QByteArray m_content;
    qsizetype m_position = 0; ///< what was read of it
};
