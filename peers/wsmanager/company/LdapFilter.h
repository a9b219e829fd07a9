// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectoryQuery.h"

#include <QByteArray>

/// Search filters as servers take them (RFC 4515).
namespace LdapFilter {
/// The query's criteria, narrowed to entries of the class, unless it is empty, that pass the further filter as well,
/// unless it is empty (in parentheses). Values are escaped, so no text can change what is asked.
QByteArray of(const DirectoryQuery &query, const QString &objectClass, const QString &furtherFilter);

/// What stands for the value in a filter: "*", "(", ")", "\", NUL and everything beyond ASCII as "\" and two digits.
QByteArray escaped(const QString &value);

/// Whether the text is a single filter in parentheses.
bool isWellFormed(const QString &filter);

} // namespace LdapFilter
