// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// How a directory server is reached.
struct LdapServer
{
    QString url;      ///< ldap://, ldaps:// or ldapi://; of several, with blanks between them, the first that answers
    QString bindName; ///< empty: anonymously
    QByteArray secret;
    QString caFile; ///< certificates to trust instead of the system's
    bool usesStartTls = false;
    int connectSeconds = 5; ///< for the connection, and again for the bind

    /// What makes no sense in it, if anything does.
    std::optional<QString> problem() const;
    bool usesTls() const;
    /// Whether anybody on the way to the server can read the secret.
    bool showsSecret() const;
};
