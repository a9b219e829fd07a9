// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/BusClient.h"
#include "bench/ServiceProcess.h"
#include "tests/support/PrivateBus.h"

#include <QTemporaryDir>

/// A bus, the peers and the service with a data folder of their own, which goes with the object. The peers run from
/// the beginning, the service when it is started.
class Stand
{
public:
    /// `capacity` contacts fit into the directory.
    Stand(const QString &workDirectory, int capacity);

    const BusClient &client() const { return m_client; }
    ServiceProcess &directory() { return m_directory; }
    const QDBusConnection &connection() const { return m_connection; }
    QString databasePath() const;
    /// Sets a setting of the phone.
    void set(const QString &key, const QString &value);
    /// Runs kestin-dir on this bus to its end, and answers with its exit code.
    int runClient(const QStringList &arguments) const;
    /// The data folder.
    QString folder() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
    PrivateBus m_bus;
    QDBusConnection m_connection;
    BusClient m_client;
    ServiceProcess m_settings;
    ServiceProcess m_telephony;
    ServiceProcess m_directory;
};
