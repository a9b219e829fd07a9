// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectoryQuery.h"

#include <QByteArray>

/// Search filters as servers take them (RFC 4515).
namespace LdapFilter {

/// The query's criteria, narrowed to entries of the class (where one is given) that pass the further filter as well
/// (where one is given, in parentheses). Values are escaped, so no text can change what is asked.
QByteArray of(const DirectoryQuery &query, const QString &objectClass, const QString &furtherFilter);

/// What stands for the value in a filter: "*", "(", ")", "\", NUL and everything beyond ASCII as "\" and two digits.
QByteArray escaped(const QString &value);

/// Whether the text is one filter in parentheses.
bool isWellFormed(const QString &filter);

} // namespace LdapFilter
