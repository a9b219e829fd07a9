// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QEventLoop>
#include <QObject>

#include <functional>

/// A caller who imports and exports and waits for the end. A BenchError when the import or export does not succeed, or
/// does not end.
class SyncClient : public QObject
{
    Q_OBJECT

public:
    explicit SyncClient(const QDBusConnection &connection);

    /// What is done meanwhile, again and again.
    using Beside = std::function<void()>;
    /// Nanoseconds from the call to the event that tells the end.
    qint64 exportTo(const QString &path, const Beside &beside = {});
    qint64 importFrom(const QString &path, const Beside &beside = {});

private Q_SLOTS:
    void take(const QDBusMessage &message);

private:
    qint64 run(const QString &method, const QVariantList &arguments, const QString &event, const Beside &beside);

    QDBusConnection m_connection;
    QString m_event; ///< that is waited for
    QDBusMessage m_end;
    QEventLoop m_loop;
};
