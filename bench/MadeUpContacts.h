// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QStringList>

#include <array>

/// People who do not exist, the same in every run. `index` is 0 to 999999.
namespace MadeUpContacts {

Contact contact(int index);

/// Contacts whose last names begin alike, as no other made-up name does; strewn over the first of them.
struct NameGroup
{
    const char *name; ///< ASCII
    int hits;         ///< how many they are
    int storeSize;    ///< from this many contacts in the store on, all of them are there
};
inline constexpr std::array nameGroups{NameGroup{"Uvarov", 1, 1000}, NameGroup{"Vance", 20, 1000},
                                       NameGroup{"Whitlock", 200, 1000}, NameGroup{"Yamada", 2000, 10000}};

/// Office, fax, mobile, home and extension, in the order in which the telephony service is given them.
QStringList rawNumbers(int index);

/// Canonical forms that only this contact has: those of rawNumbers without the extension.
QStringList canonicalNumbers(int index);

} // namespace MadeUpContacts
