// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The log that lies beside a database, with what was written last.
namespace WriteAheadLog {

/// Whether SQLite takes all that was written into it. From a damaged part on it takes nothing, without a word. True
/// when there is no log.
bool isWhole(const QString &path);

} // namespace WriteAheadLog
