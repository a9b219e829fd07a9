// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sqlite3.h>

#include <memory>

/// Owners of what SQLite's own interface opens and prepares.
namespace SqliteHandles {

struct Close
{
    void operator()(sqlite3 *database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, Close>;
using Statement = std::unique_ptr<sqlite3_stmt, Close>;

} // namespace SqliteHandles
