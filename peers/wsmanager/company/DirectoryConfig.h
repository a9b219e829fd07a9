// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/AttributeMap.h"
#include "peers/wsmanager/company/LdapServer.h"

#include <QString>

#include <optional>

/// Everything that can be set.
struct DirectoryConfig
{
    QString name = QStringLiteral("Company directory");
    QString ldif; ///< a file in place of a server
    LdapServer server;
    QString base; ///< empty: on a server the base that the library is configured with, in a file everything
    QString objectClass = QStringLiteral("inetOrgPerson");
    QString filter; ///< in parentheses; narrows what is found further; for servers only
    AttributeMap attributes;
    int pageSize = 20;
    int maxResults = 500;
    int timeoutSeconds = 8; ///< a packet that takes longer is given up
    int retrySeconds = 30;  ///< between attempts to reach a server that is not there
    int delayMs = 0;        ///< by which each packet is held back, for trying out a slow directory

    /// Reads an INI file into it. Answers what is wrong with the file, if anything is.
    [[nodiscard]] std::optional<QString> read(const QString &path);
    /// Takes a setting of the section "directory", as in the file. Answers what is wrong with it, if anything is.
    [[nodiscard]] std::optional<QString> set(const QString &key, const QString &value);
    /// What is wrong with the whole, if anything is.
    std::optional<QString> problem() const;

private:
    bool setText(const QString &key, const QString &value);
    std::optional<QString> setOther(const QString &key, const QString &value);
    std::optional<QString> setSecret(const QString &path);
    std::optional<QString> setAttributes(const QString &field, const QString &value);
};
