// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/recover/StoredRow.h"
#include "platform/records/Contact.h"

#include <optional>

/// Which column of the table CONTACT is which field of a contact.
namespace ContactColumns {

/// The columns of a table that the directory has made, in their order.
QStringList all();

/// The orders in which the values of a row may stand, the likeliest first: that of the table itself, where it is known;
/// and those of tables that older versions made, without faxCan or with it at the end.
QList<QStringList> orders(const QStringList &ofTable);

/// The contact, without its misc pairs. None when the values are none of a contact: its type, its flags and its date
/// tell.
std::optional<Contact> contactOf(const QStringList &columns, const StoredRow &row);

} // namespace ContactColumns
