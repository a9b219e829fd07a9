// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KestinPaths {

/// The path with its leading "/data" replaced by the environment variable KESTIN_DATA_DIR, where that is set: so a
/// desk or a test keeps its files elsewhere than the phone does. Any other path is returned as it is.
QString data(const QString &path);

} // namespace KestinPaths
