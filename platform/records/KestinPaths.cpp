// SPDX-License-Identifier: Apache-2.0
#include "platform/records/KestinPaths.h"

QString KestinPaths::data(const QString &path)
{
    constexpr QLatin1String root("/data");
    const QString replacement = qEnvironmentVariable("KESTIN_DATA_DIR");
    const bool below = path == root || path.startsWith(QLatin1String("/data/"));
    return replacement.isEmpty() || !below ? path : replacement + path.mid(root.size());
}
