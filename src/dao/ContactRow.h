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
extern const QString updateText;
extern const QString insertText;

/// Binds every field of the record to the placeholder of its column's name, but for the persistent id and the
/// modification date, which each operation binds by its own rule.
void bind(Statement::Use &use, const Contact &contact);

/// The row of a statement that begins with selectText. The misc pairs are not part of it.
Contact read(const Statement::Use &use);
/// What an export takes of a contact, and the row of that statement.
extern const QString exportText;
Contact readExported(const Statement::Use &use);
/// The rows of summaryText and namesText.
Contact readSummary(const Statement::Use &use);
Contact readNames(const Statement::Use &use);

} // namespace ContactRow
