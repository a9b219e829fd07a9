// SPDX-License-Identifier: Apache-2.0
#include "src/photofiles/PhotoAddress.h"

#include "platform/records/Loopback.h"

#include <QUrl>

bool PhotoAddress::isWeb(const QUrl &url)
{
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

bool PhotoAddress::isToDownload(const QString &photo)
{
    const QUrl url(photo);
    return isWeb(url) && !url.host().isEmpty() && !Loopback::isHost(url.host());
}
