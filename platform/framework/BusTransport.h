// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinTransport.h"

#include <QDBusConnection>
#include <QHash>
#include <QMetaMethod>
#include <QObject>
#include <QPointer>

#include <optional>

class KestinModule;

/// The message bus as the transport of a process.
class BusTransport : public QObject, public KestinTransport
{
    Q_OBJECT

public:
    explicit BusTransport(const QDBusConnection &connection, QObject *parent = nullptr);

    QDBusMessage syncRemoteCall(const QString &module, const QString &method, const QVariantList &arguments,
                                std::chrono::milliseconds limit = callLimit) override;
    [[nodiscard]] QDBusPendingCall asyncRemoteCall(const QString &module, const QString &method,
                                                   const QVariantList &arguments) override;
    void send(const QString &module, const QString &method, const QVariantList &arguments) override;
    bool sendEvent(const QString &module, const KestinEvent &event) override;
    bool subscribe(const QString &eventName, QObject *receiver, const QByteArray &slotSignature) override;
    std::unique_ptr<ModuleWatch> watch(const QString &module) override;

    /// Whether another process has the module's name.
    bool isTaken(const KestinModule &module) const;
    /// Registers the module's object and then claims its name. So a caller that sees the name can call. Answers why
    /// not, when that fails (the name is taken, say).
    [[nodiscard]] std::optional<QString> publish(KestinModule &module);
    /// Gives the name back, then withdraws the object.
    void withdraw(KestinModule &module);

Q_SIGNALS:
    /// The bus ended the connection. Nothing can be received or sent any more.
    void disconnected();

private Q_SLOTS:
    void deliver(const QString &eventName, const ListEventArgument &arguments);

private:
    struct Subscription
    {
        QPointer<QObject> receiver;
        QMetaMethod method;
    };

    QDBusConnection m_connection;
    QMultiHash<QString, Subscription> m_subscriptions;
};
