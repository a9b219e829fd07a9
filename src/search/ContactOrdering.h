// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

/// Orders contacts by name as the phone shows them. Names are compared in their latin form (latinText), by code unit.
/// Contacts that rank equal have no order among themselves. Keeps nothing; any thread.
class ContactOrdering
{
public:
    /// `byNameOnly`: the whole list by last name, then first name; the searched text is not used.
    /// Otherwise contacts whose first name begins with the searched text and whose last name does not are left out of
    /// the result and appended to `setAside`, in the order in which they were given; the rest is ordered as above.
    static ListContact sortContactByName(const ListContact &contacts, bool byNameOnly, const QString &searchString = {},
                                         ListContact *setAside = nullptr);

    /// By first name, then last name.
    static ListContact sortContactByFirstName(const ListContact &contacts);
};
