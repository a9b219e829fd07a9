// SPDX-License-Identifier: Apache-2.0
#include "platform/records/KestinPaths.h"

QString KestinPaths::defaultRoot()
{
    return QStringLiteral(KESTIN_DATA_DIR);
}

QString KestinPaths::data(const QString &path)
{
    constexpr QLatin1String root("/data");
    if (path != root && !path.startsWith(QLatin1String("/data/")))
        return path;
    const QString replacement = qEnvironmentVariable("KESTIN_DATA_DIR");
    return (replacement.isEmpty() ? defaultRoot() : replacement) + path.mid(root.size());
}
