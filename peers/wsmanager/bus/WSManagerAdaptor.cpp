// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/bus/WSManagerAdaptor.h"

#include "peers/wsmanager/bus/WSManager.h"
#include "platform/records/WebServiceCalls.h"

WSManagerAdaptor::WSManagerAdaptor(WSManager &module)
    : QDBusAbstractAdaptor(&module)
    , m_manager(module)
{
}

bool WSManagerAdaptor::getServiceRight(const QString &right)
{
    return m_manager.getServiceRight(right);
}

void WSManagerAdaptor::udaGetAttributes(const QString &reqId)
{
    m_manager.udaGetAttributes(reqId);
}

void WSManagerAdaptor::udaGetAttributeProperties(const QString &reqId, const QString &attribute)
{
    m_manager.udaGetAttributeProperties(reqId, attribute);
}

void WSManagerAdaptor::udaGetOperators(const QString &reqId)
{
    m_manager.udaGetOperators(reqId);
}

void WSManagerAdaptor::udaGetDirectories(const QString &reqId)
{
    m_manager.udaGetDirectories(reqId);
}

void WSManagerAdaptor::udaSearchByFullName(const QString &searchId, const QString &name)
{
    m_manager.udaSearchByFullName(searchId, name, {}, {});
}

void WSManagerAdaptor::udaSearchByFullName(const QString &searchId, const QString &name, const QStringList &attributes,
                                           const QStringList &values)
{
    m_manager.udaSearchByFullName(searchId, name, attributes, values);
}

void WSManagerAdaptor::udaSearch(const QString &searchId, const QString &joining, const QStringList &attributes,
                                 const QStringList &operators, const QStringList &values)
{
    m_manager.udaSearch(searchId, m_manager.queries().byCriteria(joining, attributes, operators, values));
}

void WSManagerAdaptor::udaSearch(const QString &searchId, const QString &joining, const QStringList &attributes,
                                 const QStringList &operators, const QStringList &values, const QStringList &first,
                                 const QStringList &second)
{
    Q_UNUSED(first)
    Q_UNUSED(second)
    udaSearch(searchId, joining, attributes, operators, values);
}

void WSManagerAdaptor::udaSearch(const QString &searchId, const QString &text, const QStringList &attributes)
{
    m_manager.udaSearch(searchId, m_manager.queries().byText(text, attributes));
}

void WSManagerAdaptor::udaSearchByIMAddress(const QString &searchId, const QString &imAddress)
{
    udaSearch(searchId, WebServiceTerm::allOf, {QStringLiteral("collaborationId")}, {WebServiceTerm::equal},
              {imAddress});
}

void WSManagerAdaptor::udaGetNextResults(const QString &searchId)
{
    m_manager.udaGetNextResults(searchId);
}

void WSManagerAdaptor::udaStopSearch(const QString &searchId)
{
    m_manager.udaStopSearch(searchId);
}

void WSManagerAdaptor::udaGetContactProfile(const QString &reqId, const QString &contactId)
{
    m_manager.udaGetContactProfile(reqId, contactId);
}

void WSManagerAdaptor::getAttributeTypeByContactId(const QString &reqId, const QString &contactId,
                                                   const QString &attribute)
{
    m_manager.getAttributeTypeByContactId(reqId, contactId, attribute);
}

void WSManagerAdaptor::makeDialableCallNumber(const QString &reqId, const QString &number)
{
    m_manager.makeDialableCallNumber(reqId, number);
}

#include "moc_WSManagerAdaptor.cpp"
