// SPDX-License-Identifier: Apache-2.0
#include "src/dao/LatinFunction.h"

#include "platform/records/LatinText.h"
#include "src/dao/Statement.h"

#include <sqlite3.h>

namespace {

/// latinText, as SQLite calls it.
void latin(sqlite3_context *context, int, sqlite3_value **arguments)
{
    const auto *utf8 = reinterpret_cast<const char *>(sqlite3_value_text(*arguments));
    const QByteArrayView stored(utf8, utf8 ? sqlite3_value_bytes(*arguments) : 0);
    const QByteArray result = latinText(Statement::decoded(stored)).toUtf8();
    sqlite3_result_text64(context, result.constData(), sqlite3_uint64(result.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
}

} // namespace

bool addLatinFunction(sqlite3 *database)
{
    return database &&
           sqlite3_create_function_v2(database, "latin", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY,
                                      nullptr, &latin, nullptr, nullptr, nullptr) == SQLITE_OK;
}
