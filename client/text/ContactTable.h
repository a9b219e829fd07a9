// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/text/Table.h"
#include "platform/records/Contact.h"

/// Contacts as a table.
namespace ContactTable {

/// What a column can be called. Beside these, "misc.KEY" is a column for any attribute.
QStringList columnNames();

bool isColumn(const QString &name);

/// Every named column in this order, or without names the usual ones, of which the less important are left out where
/// the table would be too wide. A number is never cut.
Table of(const ListContact &contacts, const QStringList &names = {});

} // namespace ContactTable
