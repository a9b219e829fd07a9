// SPDX-License-Identifier: Apache-2.0
#include "client/photo/PhotoSource.h"

#include "platform/records/Loopback.h"

#include <QRegularExpression>
#include <QUrl>

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
    if (Loopback::isHost(url.host()))
        return QStringLiteral("the directory fetches no photo from the phone itself (%1)").arg(url.host());
    return std::nullopt;
}
