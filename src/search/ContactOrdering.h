// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QMap>

/// Orders contacts by name as the phone shows them. Names are compared in their latin form (latinText), by code unit.
/// Main thread only.
class ContactOrdering
{
public:
    /// `byNameOnly`: the whole list by last name, then first name; the search texts are not used.
    /// Otherwise contacts whose first name begins with the searched text and whose last name does not are taken out
    /// of the result and become the set-aside contacts of this search, replacing those of an earlier call; the rest
    /// is ordered as above. Contacts that rank equal have no order among themselves.
    ListContact sortContactByName(const ListContact &contacts, bool byNameOnly, const QString &searchId,
                                  const QString &searchString);

    /// By first name, then last name.
    static ListContact sortContactByFirstName(const ListContact &contacts);

    /// In the order in which they were given.
    ListContact setAside(const QString &searchId) const { return m_setAside.value(searchId); }

private:
    QMap<QString, ListContact> m_setAside;
};
