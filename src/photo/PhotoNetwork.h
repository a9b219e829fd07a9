// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/photofiles/Downloads.h"

#include <QObject>

#include <memory>

/// Where photos are fetched from: loads what does it with the first download (Downloads).
class PhotoNetwork : public QObject, private Downloads::Listener
{
    Q_OBJECT

public:
    explicit PhotoNetwork(const QString &library = path());

    /// The library: beside the program that runs, or where it is installed.
    static QString path();

    /// False when there is nothing to fetch photos with: an error line says so the first time, and no download is to
    /// be started.
    bool isReady();

    /// As Downloads has them.
    QNetworkReply *get(const QUrl &url);
    void giveUp(QNetworkReply *reply);

Q_SIGNALS:
    /// The receiver deletes the reply later.
    void requestFinished(QNetworkReply *reply);

private:
    void downloadFinished(QNetworkReply *reply) override { Q_EMIT requestFinished(reply); }
    void load();

    const QString m_library;
    bool m_isLoaded = false; ///< or cannot be
    std::unique_ptr<Downloads> m_downloads;
};
