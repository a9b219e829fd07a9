// SPDX-License-Identifier: Apache-2.0
#include "client/photo/PhotoSource.h"

#include <QRegularExpression>
#include <QUrl>

#include <arpa/inet.h>

namespace {

bool isLoopback(quint32 ipv4)
{
    constexpr int firstByte = 24;
    constexpr quint32 loopbackNet = 127;
    return ipv4 >> firstByte == loopbackNet || ipv4 == 0;
}

/// The address "any" leads to the phone as well.
bool isLoopback(const in6_addr &ipv6)
{
    if (IN6_IS_ADDR_V4MAPPED(&ipv6) || IN6_IS_ADDR_V4COMPAT(&ipv6)) {
        constexpr int lastWord = 3;
        return isLoopback(ntohl(ipv6.s6_addr32[lastWord]));
    }
    return IN6_IS_ADDR_LOOPBACK(&ipv6) || IN6_IS_ADDR_UNSPECIFIED(&ipv6);
}

bool isThePhone(QString host)
{
    if (host.endsWith(QLatin1Char('.')))
        host.chop(1);
    if (host == QLatin1String("localhost") || host.endsWith(QLatin1String(".localhost")))
        return true;
    const QByteArray text = host.section(QLatin1Char('%'), 0, 0).toLatin1();
    in_addr ipv4{};
    in6_addr ipv6{};
    // The former understands every spelling that a connection would: short forms, one number, other bases.
    return (inet_aton(text.constData(), &ipv4) != 0 && isLoopback(ntohl(ipv4.s_addr))) ||
           (inet_pton(AF_INET6, text.constData(), &ipv6) == 1 && isLoopback(ipv6));
}

} // namespace

bool PhotoSource::isAddress(const QString &source)
{
    static const QRegularExpression scheme(QStringLiteral("\\A[A-Za-z][A-Za-z0-9+.-]*://"));
    return scheme.match(source).hasMatch();
}

std::optional<QString> PhotoSource::refusalOf(const QString &address)
{
    const QUrl url(address);
    const QString scheme = url.isValid() ? url.scheme() : address.section(QLatin1Char(':'), 0, 0);
    if (scheme.toLower() != QLatin1String("http") && scheme.toLower() != QLatin1String("https"))
        return QStringLiteral("the directory fetches photos over http and https only, not over %1").arg(scheme);
    if (url.host().isEmpty())
        return QStringLiteral("the address names no host");
    if (isThePhone(url.host().toLower()))
        return QStringLiteral("the directory fetches no photo from the phone itself (%1)").arg(url.host());
    return std::nullopt;
}
