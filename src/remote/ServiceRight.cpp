// SPDX-License-Identifier: Apache-2.0
#include "src/remote/ServiceRight.h"

#include "platform/framework/KestinLogger.h"
#include "platform/framework/PlatformCalls.h"
#include "platform/records/KestinBus.h"
#include "platform/records/WebServiceCalls.h"

#include <QDBusReply>

#include <utility>

ServiceRight::ServiceRight(RemoteCaller &caller, DirectoryFields &fields)
    : m_caller(caller)
    , m_fields(fields)
{
    m_requested.setSingleShot(true);
    QObject::connect(&m_requested, &QTimer::timeout, &m_requested, [this] { check(); });
}

void ServiceRight::start(bool isAllowed)
{
    m_isAllowed = isAllowed;
    if (m_isAllowed)
        check();
}

void ServiceRight::managerLeft()
{
    if (std::exchange(m_fields.icsLogin, false))
        KestinLogger::warning("The company directory has left the bus: searches find what the phone has");
    m_attributesInitialised = false;
    m_requested.stop();
}

void ServiceRight::managerCame()
{
    if (m_isAllowed)
        request();
}

void ServiceRight::request()
{
    if (!m_requested.isActive())
        m_requested.start(0);
}

bool ServiceRight::check()
{
    m_requested.stop();
    bool isValid = false;
    try {
        const QDBusReply<bool> reply = m_caller.syncRemoteCall(
            ModuleName::webServiceManager, WebServiceMethod::getServiceRight, {WebServiceTerm::companyDirectory});
        isValid = reply.isValid();
        if (isValid)
            m_fields.icsLogin = reply.value();
    } catch (...) {
        // Told below, like an answer that is an error.
    }
    if (isValid)
        KestinLogger::debug("UDA remote ICS services availability : %1", int(m_fields.icsLogin));
    else
        KestinLogger::error("bad reply on WSManager:GetServiceRight(IcsUda) : %1", int(m_fields.icsLogin));
    m_attributesInitialised = false;
    if (m_fields.icsLogin) {
        KestinLogger::debug("async call to WSManager : udaGetAttributes()");
        PlatformCalls(m_caller).callModule(ModuleName::webServiceManager, WebServiceMethod::getAttributes,
                                           {QStringLiteral("InitDir")});
    }
    return m_attributesInitialised;
}

void ServiceRight::setAttributesInitialised(bool isInitialised)
{
    if (isInitialised) {
        KestinLogger::debug("Attributes have been correctly initialized");
        m_attributesInitialised = true;
    } else {
        KestinLogger::warning("Attributes have not been correctly initialized");
    }
}
