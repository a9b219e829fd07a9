// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"

#include <QString>
#include <QStringList>

/// The calls to the company directory, which the web-service manager reaches. Each is sent without waiting; the answer
/// comes as an event (WebServiceEvents). The search id or request tag that the answer carries is the first argument.
/// True once the call is sent, but for stopSearch, which is always false; a call that cannot be sent is logged and
/// false. Where `ok` is given it tells the same. Main thread only.
class RemoteDirectory
{
public:
    explicit RemoteDirectory(RemoteCaller &caller)
        : m_caller(caller)
    {
    }

    bool searchByFullName(const QString &searchId, const QString &name, const QStringList &attributes,
                          const QStringList &values, bool *ok = nullptr);
    bool getContactProfile(const QString &searchId, const QString &contactId, bool *ok = nullptr);
    bool searchByAll(const QString &searchId, const QString &criteria, const QStringList &attributes,
                     bool *ok = nullptr);
    bool searchByIMAddress(const QString &searchId, const QString &imAddress, bool *ok = nullptr);
    bool searchByPhoneNumber(const QString &searchId, const QString &joiningOperator, const QStringList &values,
                             const QStringList &firstExtra, const QStringList &secondExtra, bool *ok = nullptr);
    bool getOperators(const QString &requestTag, bool *ok = nullptr);
    bool getNextResults(const QString &searchId, bool *ok = nullptr);
    bool getDirectories(const QString &requestTag, bool *ok = nullptr);
    bool getAttributes(const QString &requestTag, bool *ok = nullptr);
    bool getAttributeProperties(const QString &requestTag, const QString &attribute, bool *ok = nullptr);
    bool getAttributeTypeByContactId(const QString &requestTag, const QString &contactId, const QString &attribute,
                                     bool *ok = nullptr);
    bool makeDialableCallNumber(const QString &requestTag, const QString &number, bool *ok = nullptr);
    bool stopSearch(const QString &searchId, bool *ok = nullptr);

private:
    bool send(const char *name, const QString &method, const QVariantList &arguments, bool *ok,
              const char *separator = ":\n");

    RemoteCaller &m_caller;
};
