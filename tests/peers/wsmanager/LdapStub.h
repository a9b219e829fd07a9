// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLocalServer>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QUrl>

/// A directory server that lets everybody in, for what no real server does. It needs the event loop.
class LdapStub : public QLocalServer
{
public:
    LdapStub()
    {
        listen(m_folder.filePath("socket"));
        connect(this, &QLocalServer::newConnection, this, [this] {
            QLocalSocket *client = nextPendingConnection();
            connect(client, &QLocalSocket::readyRead, this, [this, client] { answer(*client); });
        });
    }
    QByteArray url() const { return "ldapi://" + QUrl::toPercentEncoding(fullServerName()); }

    QList<QByteArray> names; ///< of the entries that every search finds; none: a search costs the connection
    int binds = 0;

private:
    void answer(QLocalSocket &client)
    {
        const QByteArray request = client.readAll();
        const qsizetype begin = request.at(1) & 0x80 ? 2 + (request.at(1) & 0x7f) : 2; // behind tag and length
        const char operation = request.at(begin + 3);
        const auto send = [&client, id = request.mid(begin, 3)](const QByteArray &part) {
            client.write(element(0x30, id + part));
        };
        const QByteArray success("\x0a\x01\x00\x04\x00\x04\x00", 7);
        if (operation == 0x60 && ++binds > 0)
            send(element(0x61, success));
        if (operation != 0x63)
            return;
        for (const QByteArray &name : names)
            send(element(0x64, element(0x04, name) + element(0x30, {})));
        names.isEmpty() ? client.abort() : send(element(0x65, success));
    }
    static QByteArray element(char tag, const QByteArray &content) { return tag + (char(content.size()) + content); }

    QTemporaryDir m_folder;
};
