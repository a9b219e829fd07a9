// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

/// The texts of statements that are put together at run time. Which contacts a search finds follows from exactly these
/// rules. The escape character of LIKE is "$".
namespace QueryText {

/// Appends a condition on a column to a statement: " WHERE " before the first (count 0), " AND " before the others.
/// Exact compares for equality, otherwise the value is matched literally as a prefix.
void addCondition(QString &statement, const QString &column, const QString &value, bool exact, int &count);

/// The condition that finds the text anywhere in any of 30 columns. A typed "%" or "_" keeps a meaning of its own:
/// see the order in which the escapes are made.
QString allFieldsCondition(const QString &text);

/// "'a', 'b' )" as the end of an IN list: the ids quoted, with a blank before the bracket.
QString idList(const QStringList &ids);

/// The value between apostrophes, with each of its own doubled.
QString quoted(const QString &value);

/// A pattern for names that begin with this name: split at `separator`, empty pieces dropped, joined with it again,
/// trimmed, "%" appended. "%" and "_" of the name act as wildcards. An empty name matches every name.
QString namePattern(const QString &name, const QString &separator);

/// What every text that such a pattern matches begins with, letter case aside: all before the first wildcard.
QString fixedPrefix(const QString &pattern);

} // namespace QueryText
