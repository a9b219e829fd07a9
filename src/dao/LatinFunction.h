// SPDX-License-Identifier: Apache-2.0
#pragma once

struct sqlite3;

/// Makes latinText callable by statements of this connection, as latin(text); of NULL it makes an empty text. Triggers
/// and views of the file cannot call it. False when SQLite refuses: then a statement that names it cannot be prepared.
[[nodiscard]] bool addLatinFunction(sqlite3 *database);
