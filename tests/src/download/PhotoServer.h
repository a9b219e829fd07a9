// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/Test.h"

#include <QProcess>
#include <QTemporaryDir>

constexpr int limitMs = 20000;
const QString secret = "me:secret@", site = "http://" + secret + "photos.example";
const QByteArray phoneName = "phone.example"; ///< is asked without the proxy, as localhost is

/// A server of photos on this machine, and the proxy through which this process reaches all others.
struct PhotoServer
{
    ~PhotoServer()
    {
        m_process.kill();
        m_process.waitForFinished(limitMs);
    }
    bool start()
    {
        m_process.start("python3", {KESTIN_PHOTO_SERVER, folder.path()});
        while (!m_process.canReadLine() && m_process.waitForReadyRead(limitMs)) {
        }
        const QStringList ports = QString::fromLatin1(m_process.readLine().trimmed()).split(' ');
        if (ports.size() != 3)
            return false;
        http = "http://localhost:" + ports[0];
        https = "https://localhost:" + ports[1];
        expired = "https://localhost:" + ports[2];
        qputenv("http_proxy", http.toLatin1());
        qputenv("no_proxy", "localhost,127.0.0.1," + phoneName);
        return true;
    }

    QTemporaryDir folder; ///< what it serves, as /file/…
    QString http, https, expired;

private:
    QProcess m_process;
};
