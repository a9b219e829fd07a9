// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/KestinModule.h"

#include "platform/framework/HeldCall.h"
#include "platform/framework/KestinException.h"
#include "platform/framework/KestinTransport.h"
#include "platform/records/KestinBus.h"

KestinModule::KestinModule(const QString &name)
    : m_name(name)
{
}

bool KestinModule::check()
{
    return true;
}
bool KestinModule::deploy()
{
    return true;
}
bool KestinModule::init()
{
    return true;
}
bool KestinModule::run()
{
    return true;
}
void KestinModule::presentation_loaded() {}
void KestinModule::presentation_stop() {}
void KestinModule::stop() {}
bool KestinModule::preSaveForSaveRestore()
{
    return true;
}
bool KestinModule::postRestoreForSaveRestore()
{
    return true;
}
bool KestinModule::restoreDataToDefault()
{
    return true;
}
bool KestinModule::restoreDataToFactory()
{
    return true;
}

MapQStringCapability KestinModule::getCapabilities()
{
    return getCapabilities(0);
}

MapQStringCapability KestinModule::getCapabilities(int listId)
{
    Q_UNUSED(listId) // a module that has capabilities says which
    return {};
}

Capability KestinModule::getCapability(QString name)
{
    return getCapability(0, name);
}

Capability KestinModule::getCapability(int listId, QString name)
{
    return getCapabilities(listId).value(name, Capability{name, 0});
}

KestinTransport &KestinModule::transport()
{
    if (!m_transport)
        throw KestinException(m_name, KestinException::RemoteCallFailed,
                              QStringLiteral("the module is not connected to the bus"));
    return *m_transport;
}

QDBusMessage KestinModule::syncRemoteCall(const QString &module, const QString &method, const QVariantList &arguments,
                                          std::chrono::milliseconds limit)
{
    return transport().syncRemoteCall(module, method, arguments, limit);
}

QDBusPendingCall KestinModule::asyncRemoteCall(const QString &module, const QString &method,
                                               const QVariantList &arguments)
{
    return transport().asyncRemoteCall(module, method, arguments);
}

void KestinModule::send(const QString &module, const QString &method, const QVariantList &arguments)
{
    transport().send(module, method, arguments);
}

bool KestinModule::subscribeEvent(const QString &eventName, QObject *receiver, const char *slotSignature)
{
    return m_transport && m_transport->subscribe(eventName, receiver, slotSignature);
}

std::unique_ptr<ModuleWatch> KestinModule::watchModule(const QString &module)
{
    return transport().watch(module);
}

bool KestinModule::notifyEvent(const KestinEvent &event)
{
    return m_transport && m_transport->sendEvent(m_name, event);
}

bool KestinModule::showPopup(const QString &text, int kind, int duration, const QStringList &buttons,
                             const QString &icon, const QStringList &arguments, const QMap<QString, QString> &options)
{
    if (!m_transport)
        return false;
    m_transport->send(ModuleName::presentation, QStringLiteral("showPopup"),
                      {text, kind, duration, buttons, icon, arguments, QVariant::fromValue(options)});
    return true;
}

bool KestinModule::mustWait(const QByteArray &) const
{
    return false;
}

void KestinModule::answerWithError(const QString &errorName, const QString &message)
{
    if (m_heldCall)
        m_heldCall->answerWithError(errorName, message);
    else if (calledFromDBus() && QDBusContext::message().isReplyRequired())
        sendErrorReply(errorName, message);
}

#include "moc_KestinModule.cpp"
#include "moc_ModuleWatch.cpp"
