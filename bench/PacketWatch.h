// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/Rounds.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>

/// A third party on the bus that hears the web-service manager tell a packet and the directory tell the results in it.
/// The directory must show its results per directory, else it tells them at the end only.
class PacketWatch : public QObject
{
    Q_OBJECT

public:
    explicit PacketWatch(const QDBusConnection &connection);

    /// Searches, and adds the time between the two events for each packet. A BenchError when there are not so many.
    void measure(const QString &name, int packets, Samples &samples);

private Q_SLOTS:
    void take(const QDBusMessage &message);

private:
    QDBusConnection m_connection;
    QElapsedTimer m_timer; ///< since the packet
    QEventLoop m_loop;
    QList<qint64> m_times;
    int m_searches = 0;
};
