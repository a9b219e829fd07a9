// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/company/LdapServer.h"

#include "peers/wsmanager/company/LdapMemory.h"
#include "platform/records/AddressText.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace {

/// "ldap", "ldaps" or "ldapi"; empty when the text is no address of a server.
QString schemeOf(const QString &address)
{
    LDAPURLDesc *parts = nullptr;
    if (ldap_url_parse(address.toUtf8().constData(), &parts) != LDAP_URL_SUCCESS)
        return QString();
    const LdapUrl owned(parts);
    const QString scheme = QString::fromUtf8(parts->lud_scheme);
    const bool hasEntry = parts->lud_dn && *parts->lud_dn != '\0'; // a slash at the end names none
    const bool isServer = !hasEntry && parts->lud_port >= 0 && parts->lud_port <= 0xffff;
    static const QStringList known{QStringLiteral("ldap"), QStringLiteral("ldaps"), QStringLiteral("ldapi")};
    return isServer && known.contains(scheme) ? scheme : QString();
}

QStringList addressesOf(const QString &url)
{
    static const QRegularExpression between(QStringLiteral("[ ,]+"));
    return url.split(between, Qt::SkipEmptyParts);
}

bool hasScheme(const QString &url, QLatin1String scheme)
{
    const QStringList addresses = addressesOf(url);
    return std::any_of(addresses.begin(), addresses.end(),
                       [scheme](const QString &address) { return schemeOf(address) == scheme; });
}

} // namespace

std::optional<QString> LdapServer::problem() const
{
    const QStringList addresses = addressesOf(url);
    for (const QString &address : addresses) {
        const QString scheme = schemeOf(address);
        if (scheme.isEmpty())
            return QStringLiteral("\"%1\" is no address of a directory server; see --help")
                .arg(AddressText::withoutUserInfo(address));
        if (usesStartTls && scheme != QLatin1String("ldap"))
            return QStringLiteral("startTls secures ldap:// only, not \"%1\"").arg(address);
    }
    // Many servers take a name without a secret for nobody, and answer as they answer anybody.
    if (!bindName.isEmpty() && secret.isEmpty())
        return QStringLiteral("a bind name needs a secret; secretFile names no file, or an empty one");
    if (bindName.isEmpty() && !secret.isEmpty())
        return QStringLiteral("a secret needs a bind name");
    return std::nullopt;
}

bool LdapServer::usesTls() const
{
    return usesStartTls || hasScheme(url, QLatin1String("ldaps"));
}

bool LdapServer::showsSecret() const
{
    return !secret.isEmpty() && !usesStartTls && hasScheme(url, QLatin1String("ldap"));
}
