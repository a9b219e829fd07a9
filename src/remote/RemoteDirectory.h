// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"

#include <QString>
#include <QStringList>

#include <optional>

/// The calls to the company directory, which the web-service manager reaches. Each is sent without waiting; the answer
/// comes as an event (WebServiceEvents). The search id or request tag that the answer carries is the first argument.
/// Answers true once the call is sent, but for stopSearch, which answers false: a search that is stopped has no answer.
/// Nothing when the call could not be sent; the log says why.
class RemoteDirectory
{
public:
    explicit RemoteDirectory(RemoteCaller &caller)
        : m_caller(caller)
    {
    }

    std::optional<bool> searchByFullName(const QString &searchId, const QString &name, const QStringList &attributes,
                                         const QStringList &values);
    std::optional<bool> getContactProfile(const QString &searchId, const QString &contactId);
    std::optional<bool> searchByAll(const QString &searchId, const QString &criteria, const QStringList &attributes);
    std::optional<bool> searchByIMAddress(const QString &searchId, const QString &imAddress);
    std::optional<bool> searchByPhoneNumber(const QString &searchId, const QString &joiningOperator,
                                            const QStringList &values, const QStringList &firstExtra,
                                            const QStringList &secondExtra);
    std::optional<bool> getOperators(const QString &requestTag);
    std::optional<bool> getNextResults(const QString &searchId);
    std::optional<bool> getDirectories(const QString &requestTag);
    std::optional<bool> getAttributes(const QString &requestTag);
    std::optional<bool> getAttributeProperties(const QString &requestTag, const QString &attribute);
    std::optional<bool> getAttributeTypeByContactId(const QString &requestTag, const QString &contactId,
                                                    const QString &attribute);
    std::optional<bool> makeDialableCallNumber(const QString &requestTag, const QString &number);
    std::optional<bool> stopSearch(const QString &searchId);

private:
    std::optional<bool> send(const char *name, const QString &method, const QVariantList &arguments,
                             const char *separator = ":\n");

    RemoteCaller &m_caller;
};
