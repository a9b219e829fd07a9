// SPDX-License-Identifier: Apache-2.0
#include "src/remote/RemoteDirectory.h"

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/KestinBus.h"
#include "platform/records/WebServiceCalls.h"

std::optional<bool> RemoteDirectory::send(const char *name, const QString &method, const QVariantList &arguments,
                                          const char *separator)
{
    const QString text = QStringLiteral("ERROR: While calling method %1 of module KestinWebServiceHelper");
    try {
        m_caller.send(ModuleName::webServiceManager, method, arguments);
    } catch (const KestinException &exception) {
        const QByteArray pattern = text.toUtf8() + separator + "%2";
        KestinLogger::error(pattern.constData(), name, exception.message());
        return std::nullopt;
    } catch (...) {
        KestinLogger::error(text.toUtf8().constData(), name);
        return std::nullopt;
    }
    return true;
}

std::optional<bool> RemoteDirectory::searchByFullName(const QString &searchId, const QString &name,
                                                      const QStringList &attributes, const QStringList &values)
{
    return send("searchByFullName", WebServiceMethod::searchByFullName, {searchId, name, attributes, values});
}

std::optional<bool> RemoteDirectory::getContactProfile(const QString &searchId, const QString &contactId)
{
    return send("getContactProfile", WebServiceMethod::getContactProfile, {searchId, contactId});
}

std::optional<bool> RemoteDirectory::searchByAll(const QString &searchId, const QString &criteria,
                                                 const QStringList &attributes)
{
    return send("searchByAll", WebServiceMethod::search, {searchId, criteria, attributes});
}

std::optional<bool> RemoteDirectory::searchByIMAddress(const QString &searchId, const QString &imAddress)
{
    return send("searchByIMAddress", WebServiceMethod::searchByIMAddress, {searchId, imAddress});
}

std::optional<bool> RemoteDirectory::searchByPhoneNumber(const QString &searchId, const QString &joiningOperator,
                                                         const QStringList &values, const QStringList &firstExtra,
                                                         const QStringList &secondExtra)
{
    return send("searchByPhoneNumber", WebServiceMethod::search,
                {searchId, joiningOperator, QStringList{WebServiceTerm::anyNumber}, QStringList{WebServiceTerm::equal},
                 values, firstExtra, secondExtra});
}

std::optional<bool> RemoteDirectory::getOperators(const QString &requestTag)
{
    return send("getOperators", WebServiceMethod::getOperators, {requestTag});
}

std::optional<bool> RemoteDirectory::getNextResults(const QString &searchId)
{
    return send("getNextResults", WebServiceMethod::getNextResults, {searchId});
}

std::optional<bool> RemoteDirectory::getDirectories(const QString &requestTag)
{
    return send("getDirectories", WebServiceMethod::getDirectories, {requestTag}, ":");
}

std::optional<bool> RemoteDirectory::getAttributes(const QString &requestTag)
{
    return send("getAttributes", WebServiceMethod::getAttributes, {requestTag});
}

std::optional<bool> RemoteDirectory::getAttributeProperties(const QString &requestTag, const QString &attribute)
{
    return send("getAttributeProperties", WebServiceMethod::getAttributeProperties, {requestTag, attribute});
}

std::optional<bool> RemoteDirectory::getAttributeTypeByContactId(const QString &requestTag, const QString &contactId,
                                                                 const QString &attribute)
{
    return send("getAttributeTypeByContactId", WebServiceMethod::getAttributeTypeByContactId,
                {requestTag, contactId, attribute});
}

std::optional<bool> RemoteDirectory::makeDialableCallNumber(const QString &requestTag, const QString &number)
{
    return send("makeDialableCallNumber", WebServiceMethod::makeDialableCallNumber, {requestTag, number});
}

std::optional<bool> RemoteDirectory::stopSearch(const QString &searchId)
{
    if (!send("stopSearch", WebServiceMethod::stopSearch, {searchId}))
        return std::nullopt;
    return false;
}
