// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/AnonymousContact.h"

bool isAnonymous(const Contact &contact)
{
    constexpr QLatin1String anonymous("anonymous");
    // Of the home number it is the canonical form that tells.
    return contact.personalMobile == anonymous || contact.fax == anonymous || contact.officePhone == anonymous ||
           contact.personalFax == anonymous || contact.personalHomeCan == anonymous;
}
