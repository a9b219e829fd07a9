// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/BusTransport.h"

#include "platform/framework/KestinLogger.h"
#include "platform/framework/KestinModule.h"
#include "platform/framework/WireSize.h"
#include "platform/records/KestinBus.h"

#include <QDBusError>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QLibrary>

namespace {

qsizetype wireSizeOf(const KestinEvent &event)
{
    qsizetype size = 0;
    for (const EventArgument &argument : event.arguments())
        size += WireSize::of(argument.value);
    return size;
}

/// Lets the connection take whatever the bus holds back for it, which is 127 MiB at most and one message. The bus
/// library stops reading when 63 MiB wait to be handled: the answers of other modules, which come behind a few long
/// lists, are not read then, and at times nothing ever again. Qt has no way to say so; where the library has none
/// either, its limit stays.
void readWhateverWaits(const QDBusConnection &connection)
{
    constexpr long limit = 192L << 20;
    using SetLimit = void (*)(void *connection, long size);
    const auto setLimit = reinterpret_cast<SetLimit>(
        QLibrary::resolve(QStringLiteral("dbus-1"), 3, "dbus_connection_set_max_received_size"));
    if (setLimit && connection.isConnected())
        setLimit(connection.internalPointer(), limit);
}

} // namespace

BusTransport::BusTransport(const QDBusConnection &connection, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
{
    registerDBusEventArgument();
    readWhateverWaits(m_connection);
    m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                         QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                         SIGNAL(disconnected()));
}

QDBusMessage BusTransport::syncRemoteCall(const QString &module, const QString &method, const QVariantList &arguments,
                                          std::chrono::milliseconds limit)
{
    return m_connection.call(KestinBus::methodCall(module, method, arguments), QDBus::Block, int(limit.count()));
}

QDBusPendingCall BusTransport::asyncRemoteCall(const QString &module, const QString &method,
                                               const QVariantList &arguments)
{
    return m_connection.asyncCall(KestinBus::methodCall(module, method, arguments), int(callLimit.count()));
}

void BusTransport::send(const QString &module, const QString &method, const QVariantList &arguments)
{
    // The bus library marks a call that is sent this way as one without a reply.
    if (!m_connection.send(KestinBus::methodCall(module, method, arguments)))
        KestinLogger::warning("%1 of %2 was not called: %3", method, module, m_connection.lastError().message());
}

bool BusTransport::sendEvent(const QString &module, const KestinEvent &event)
{
    if (wireSizeOf(event) > WireSize::limit)
        return false;
    QDBusMessage signal = QDBusMessage::createSignal(
        KestinBus::objectPath(module), QLatin1String(KestinBus::eventInterface), QLatin1String(KestinBus::eventSignal));
    signal << event.getEvtName() << QVariant::fromValue(event.arguments());
    return m_connection.send(signal);
}

bool BusTransport::subscribe(const QString &eventName, QObject *receiver, const QByteArray &slotSignature)
{
    const QByteArray signature = QMetaObject::normalizedSignature(slotSignature.constData());
    const QMetaMethod method = receiver->metaObject()->method(receiver->metaObject()->indexOfMethod(signature));
    if (method.parameterCount() != 1 || method.parameterMetaType(0) != QMetaType::fromType<KestinEvent>())
        return false;
    if (!m_subscriptions.contains(eventName)) {
        // The daemon matches on the first argument: events nobody here wants never wake this process.
        const bool connected = m_connection.connect(
            QString(), QString(), QLatin1String(KestinBus::eventInterface), QLatin1String(KestinBus::eventSignal),
            {eventName}, QLatin1String(KestinBus::eventSignature), this, SLOT(deliver(QString, ListEventArgument)));
        if (!connected)
            return false;
    }
    m_subscriptions.insert(eventName, {receiver, method});
    return true;
}

std::unique_ptr<ModuleWatch> BusTransport::watch(const QString &module)
{
    auto watch = std::make_unique<ModuleWatch>();
    auto *watcher = new QDBusServiceWatcher(KestinBus::serviceName(module), m_connection,
                                            QDBusServiceWatcher::WatchForOwnerChange, watch.get());
    const auto tell = [watch = watch.get()](const QString &, const QString &before, const QString &now) {
        if (!before.isEmpty())
            Q_EMIT watch->left();
        if (!now.isEmpty())
            Q_EMIT watch->came();
    };
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, watch.get(), tell);
    return watch;
}

void BusTransport::deliver(const QString &eventName, const ListEventArgument &arguments)
{
    const KestinEvent event(eventName, arguments);
    const QList<Subscription> subscriptions = m_subscriptions.values(eventName);
    for (const Subscription &subscription : subscriptions) {
        if (subscription.receiver)
            subscription.method.invoke(subscription.receiver, Qt::DirectConnection, Q_ARG(KestinEvent, event));
    }
}

bool BusTransport::isTaken(const KestinModule &module) const
{
    QDBusMessage question =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    question << KestinBus::serviceName(module.getModuleName());
    return QDBusReply<bool>(m_connection.call(question, QDBus::Block, int(callLimit.count()))).value();
}

std::optional<QString> BusTransport::publish(KestinModule &module)
{
    const QString path = KestinBus::objectPath(module.getModuleName());
    const QString name = KestinBus::serviceName(module.getModuleName());
    if (!m_connection.registerObject(path, &module, QDBusConnection::ExportAdaptors))
        return QStringLiteral("the object %1 cannot be registered: %2").arg(path, m_connection.lastError().message());
    if (m_connection.registerService(name))
        return std::nullopt;
    const QDBusError error = m_connection.lastError();
    m_connection.unregisterObject(path);
    return error.isValid() ? QStringLiteral("the name %1 cannot be claimed: %2").arg(name, error.message())
                           : QStringLiteral("the name %1 is already taken").arg(name);
}

void BusTransport::withdraw(KestinModule &module)
{
    m_connection.unregisterService(KestinBus::serviceName(module.getModuleName()));
    m_connection.unregisterObject(KestinBus::objectPath(module.getModuleName()));
}

#include "moc_BusTransport.cpp"
