// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/ModuleLife.h"

#include "platform/framework/BusTransport.h"
#include "platform/framework/KestinLogger.h"
#include "platform/framework/KestinModule.h"
#include "platform/records/KestinBus.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QMetaObject>

#include <systemd/sd-daemon.h>

namespace {

/// What the libraries have to say goes the way of every other line.
void logMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    switch (type) {
    case QtDebugMsg:
        KestinLogger::debug("%1", message);
        break;
    case QtInfoMsg:
        KestinLogger::info("%1", message);
        break;
    case QtWarningMsg:
        KestinLogger::warning("%1", message);
        break;
    default:
        KestinLogger::error("%1", message);
    }
}

} // namespace

ModuleLife::ModuleLife(Loop loop)
    : m_loop(loop)
{
    qInstallMessageHandler(logMessage);
    connect(&m_signals, &ProcessSignals::terminationRequested, this, [] { QCoreApplication::exit(EXIT_SUCCESS); });
}

ModuleLife::~ModuleLife() = default;

int ModuleLife::lead(KestinModule &module, const MakeAdaptor &makeAdaptor)
{
    bool published = false;
    const auto startInLoop = [this, &module, &makeAdaptor, &published] {
        const auto reason = start(module, makeAdaptor);
        published = !reason;
        if (published) {
            sd_notify(0, "READY=1");
        } else {
            KestinLogger::error("%1 cannot start: %2", module.getModuleName(), *reason);
            QCoreApplication::exit(EXIT_FAILURE);
        }
    };
    QMetaObject::invokeMethod(this, startInLoop, Qt::QueuedConnection);
    const int exitCode = m_loop();
    sd_notify(0, "STOPPING=1");
    if (published)
        m_transport->withdraw(module);
    module.stop();
    return exitCode;
}

/// Why the module is not on the bus, when it is not.
std::optional<QString> ModuleLife::start(KestinModule &module, const MakeAdaptor &makeAdaptor)
{
    const QDBusConnection connection = KestinBus::connect();
    if (!connection.isConnected())
        return QStringLiteral("the message bus cannot be reached: %1").arg(connection.lastError().message());
    m_transport = std::make_unique<BusTransport>(connection);
    connect(m_transport.get(), &BusTransport::disconnected, this, [&module] {
        KestinLogger::error("%1 ends: the message bus closed the connection", module.getModuleName());
        QCoreApplication::exit(EXIT_FAILURE);
    });
    module.attach(*m_transport);
    if (m_transport->isTaken(module)) // by one that works on the same data
        return QStringLiteral("the name %1 is already taken").arg(KestinBus::serviceName(module.getModuleName()));
    if (!module.check() && !module.deploy())
        return QStringLiteral("what it keeps cannot be set up");
    if (!module.init())
        return QStringLiteral("it could not be initialised");
    if (!module.run())
        return QStringLiteral("it could not be run");
    makeAdaptor();
    return m_transport->publish(module);
}

#include "moc_KestinApplication.cpp"
#include "moc_ModuleLife.cpp"
