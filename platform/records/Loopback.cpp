// SPDX-License-Identifier: Apache-2.0
#include "platform/records/Loopback.h"

#include <arpa/inet.h>

namespace {

bool isLoopback(quint32 ipv4)
{
    constexpr int firstByte = 24;
    constexpr quint32 loopbackNet = 127;
    return ipv4 >> firstByte == loopbackNet || ipv4 == 0;
}

bool isLoopback(const in6_addr &ipv6)
{
    if (IN6_IS_ADDR_V4MAPPED(&ipv6) || IN6_IS_ADDR_V4COMPAT(&ipv6)) {
        constexpr int lastWord = 3;
        return isLoopback(ntohl(ipv6.s6_addr32[lastWord]));
    }
    return IN6_IS_ADDR_LOOPBACK(&ipv6) || IN6_IS_ADDR_UNSPECIFIED(&ipv6);
}

} // namespace

bool Loopback::isHost(const QString &host)
{
    QString name = host.toLower();
    if (name.endsWith(QLatin1Char('.')))
        name.chop(1);
    if (name == QLatin1String("localhost") || name.endsWith(QLatin1String(".localhost")))
        return true;
    const QByteArray address = name.section(QLatin1Char('%'), 0, 0).toLatin1();
    in_addr ipv4{};
    in6_addr ipv6{};
    // The former understands every spelling that a connection would: short forms, one number, other bases.
    return (inet_aton(address.constData(), &ipv4) != 0 && isLoopback(ntohl(ipv4.s_addr))) ||
           (inet_pton(AF_INET6, address.constData(), &ipv6) == 1 && isLoopback(ipv6));
}
