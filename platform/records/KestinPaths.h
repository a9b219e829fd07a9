// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KestinPaths {

/// The folder below which a phone keeps its files: what the CMake variable KESTIN_DATA_DIR was when this was built.
QString defaultRoot();

/// The path with its leading "/data" replaced by that folder or, where the environment variable KESTIN_DATA_DIR is set,
/// by what it says: so a desk or a test keeps its files elsewhere than the phone does. Any other path is returned as it
/// is.
QString data(const QString &path);

} // namespace KestinPaths
