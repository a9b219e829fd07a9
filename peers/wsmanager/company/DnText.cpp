// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/company/DnText.h"

#include "peers/wsmanager/company/LdapMemory.h"

QString DnText::normalized(const QByteArray &dn)
{
    char *text = nullptr;
    const int rc =
        ldap_dn_normalize(dn.constData(), LDAP_DN_FORMAT_LDAP, &text, LDAP_DN_FORMAT_LDAPV3 | LDAP_DN_PRETTY);
    const LdapText owned(text);
    return rc == LDAP_SUCCESS ? QString::fromUtf8(text) : QString();
}

bool DnText::isWithin(const QString &dn, const QString &base)
{
    return base.isEmpty() || dn.compare(base, Qt::CaseInsensitive) == 0 ||
           dn.endsWith(QLatin1Char(',') + base, Qt::CaseInsensitive);
}
