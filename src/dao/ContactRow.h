// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"
#include "src/dao/Statement.h"

/// How a contact lies in the CONTACT table. Statements that read or write whole contacts use these texts.
namespace ContactRow {

extern const QString selectText;
/// What a summary holds, of a statement on whole contacts that is put in for %1. Columns that it does not name are not
/// even read by the database.
extern const QString summaryText;
/// The same for the names.
extern const QString namesText;
/// Statements of which only summaryText or namesText is read.
extern const QString latinNameText;
extern const QString noLatinNameText;
/// Of the latin names that LIKE is to compare with a pattern, those that begin as it does before its first wildcard: an
/// index finds them, and the statement need not be prepared again for each pattern. Of UTF-8 no text has a byte FF.
inline constexpr char latinPrefixCondition[] =
    "latinName COLLATE NOCASE>=:prefix AND latinName COLLATE NOCASE<:prefix||CAST(x'FF' AS TEXT)";
/// What an export takes of a contact.
extern const QString exportText;
extern const QString updateText;
extern const QString insertText;

/// Bind the next parameters of the use to the fields of the record: all of insertText, and of updateText those up to
/// its end.
void bindInsert(Statement::Use &use, const Contact &contact);
void bindUpdate(Statement::Use &use, const Contact &contact);

/// The row of a statement that begins with selectText. The misc pairs are not part of it.
Contact read(const Statement::Use &row);
/// The rows of statements that begin with these texts.
Contact readSummary(const Statement::Use &row);
Contact readNames(const Statement::Use &row);
Contact readExported(const Statement::Use &row);

} // namespace ContactRow
