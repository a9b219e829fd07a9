// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Why an import or export failed, where that is told.
namespace StoreFailure {
inline const QString unreadable = QStringLiteral("The contacts cannot be read from the database.");
} // namespace StoreFailure
