// SPDX-License-Identifier: Apache-2.0
#include "src/photofiles/PhotoAddress.h"

#include <QHostAddress>
#include <QUrl>

bool PhotoAddress::isLoopback(const QString &host)
{
    QString name = host.toLower();
    if (name.endsWith(QLatin1Char('.')))
        name.chop(1);
    if (name == QLatin1String("localhost") || name.endsWith(QLatin1String(".localhost")))
        return true;
    // Understands every spelling that a connection would: short forms, one number, other bases.
    return isLoopback(QHostAddress(name));
}

bool PhotoAddress::isLoopback(const QHostAddress &address)
{
    bool isIpv4 = false; // also when it is written as an IPv6 address
    const quint32 ipv4 = address.toIPv4Address(&isIpv4);
    return address.isLoopback() || (isIpv4 && (ipv4 >> 24 == 127 || ipv4 == 0));
}

bool PhotoAddress::isWeb(const QUrl &url)
{
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

bool PhotoAddress::isToDownload(const QString &photo)
{
    const QUrl url(photo);
    return isWeb(url) && !url.host().isEmpty() && !isLoopback(url.host());
}
