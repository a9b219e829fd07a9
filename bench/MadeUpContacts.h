// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QStringList>

/// People who do not exist, the same in every run. `index` is 0 to 999999.
namespace MadeUpContacts {

Contact contact(int index);

/// Office, fax, mobile, home and extension, in the order in which the telephony service is given them.
QStringList rawNumbers(int index);

/// Canonical forms that only this contact has: those of rawNumbers without the extension.
QStringList canonicalNumbers(int index);

} // namespace MadeUpContacts
