// SPDX-License-Identifier: Apache-2.0
#include "src/remote/RemoteDirectory.h"

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/KestinBus.h"

bool RemoteDirectory::send(const char *name, const QString &method, const QVariantList &arguments, bool *ok,
                           const char *separator)
{
    if (ok)
        *ok = false;
    const QString text = QStringLiteral("ERROR: While calling method %1 of module KestinWebServiceHelper");
    try {
        m_caller.send(ModuleName::webServiceManager, method, arguments);
    } catch (const KestinException &exception) {
        const QByteArray pattern = text.toUtf8() + separator + "%2";
        KestinLogger::error(pattern.constData(), name, exception.message());
        return false;
    } catch (...) {
        KestinLogger::error(text.toUtf8().constData(), name);
        return false;
    }
    if (ok)
        *ok = true;
    return true;
}

bool RemoteDirectory::searchByFullName(const QString &searchId, const QString &name, const QStringList &attributes,
                                       const QStringList &values, bool *ok)
{
    return send("searchByFullName", QStringLiteral("udaSearchByFullName"), {searchId, name, attributes, values}, ok);
}

bool RemoteDirectory::getContactProfile(const QString &searchId, const QString &contactId, bool *ok)
{
    return send("getContactProfile", QStringLiteral("udaGetContactProfile"), {searchId, contactId}, ok);
}

bool RemoteDirectory::searchByAll(const QString &searchId, const QString &criteria, const QStringList &attributes,
                                  bool *ok)
{
    return send("searchByAll", QStringLiteral("udaSearch"), {searchId, criteria, attributes}, ok);
}

bool RemoteDirectory::searchByIMAddress(const QString &searchId, const QString &imAddress, bool *ok)
{
    return send("searchByIMAddress", QStringLiteral("udaSearchByIMAddress"), {searchId, imAddress}, ok);
}

bool RemoteDirectory::searchByPhoneNumber(const QString &searchId, const QString &joiningOperator,
                                          const QStringList &values, const QStringList &firstExtra,
                                          const QStringList &secondExtra, bool *ok)
{
    return send("searchByPhoneNumber", QStringLiteral("udaSearch"),
                {searchId, joiningOperator, QStringList{QStringLiteral("TELEPHONENUMBER")},
                 QStringList{QStringLiteral("EQUAL")}, values, firstExtra, secondExtra},
                ok);
}

bool RemoteDirectory::getOperators(const QString &requestTag, bool *ok)
{
    return send("getOperators", QStringLiteral("udaGetOperators"), {requestTag}, ok);
}

bool RemoteDirectory::getNextResults(const QString &searchId, bool *ok)
{
    return send("getNextResults", QStringLiteral("udaGetNextResults"), {searchId}, ok);
}

bool RemoteDirectory::getDirectories(const QString &requestTag, bool *ok)
{
    return send("getDirectories", QStringLiteral("udaGetDirectories"), {requestTag}, ok, ":");
}

bool RemoteDirectory::getAttributes(const QString &requestTag, bool *ok)
{
    return send("getAttributes", QStringLiteral("udaGetAttributes"), {requestTag}, ok);
}

bool RemoteDirectory::getAttributeProperties(const QString &requestTag, const QString &attribute, bool *ok)
{
    return send("getAttributeProperties", QStringLiteral("udaGetAttributeProperties"), {requestTag, attribute}, ok);
}

bool RemoteDirectory::getAttributeTypeByContactId(const QString &requestTag, const QString &contactId,
                                                  const QString &attribute, bool *ok)
{
    return send("getAttributeTypeByContactId", QStringLiteral("getAttributeTypeByContactId"),
                {requestTag, contactId, attribute}, ok);
}

bool RemoteDirectory::makeDialableCallNumber(const QString &requestTag, const QString &number, bool *ok)
{
    return send("makeDialableCallNumber", QStringLiteral("makeDialableCallNumber"), {requestTag, number}, ok);
}

bool RemoteDirectory::stopSearch(const QString &searchId, bool *ok)
{
    send("stopSearch", QStringLiteral("udaStopSearch"), {searchId}, ok);
    return false; // whether or not it was sent: a search that is stopped has no answer
}
