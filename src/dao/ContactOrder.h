// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

/// The orders in which contacts are shown. Names are compared in their latin form (latinText), by code unit. Contacts
/// that rank equal have no order among themselves. Any thread.
namespace ContactOrder {

/// By last name, then first name. The searched text stands in the log only.
ListContact byName(ListContact contacts, const QString &searchString = {});
ListContactSummary byName(ListContactSummary summaries);

struct Found
{
    ListContact ordered;  ///< by last name, then first name
    ListContact setAside; ///< those of which only the first name begins with the searched text, as they were given
};
Found forSearch(const ListContact &contacts, const QString &searchString);

/// By first name, then last name.
ListContact byFirstName(ListContact contacts);

} // namespace ContactOrder
