// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/Contact_Item.h"
#include "platform/records/Contact.h"

#include <QByteArray>

/// Which field of a contact is which element of a synchronisation file.
namespace SyncElements {

/// The contact as an item of the file. `photo`: the image itself, empty for none.
Contact_Item itemOf(const Contact &contact, const QByteArray &photo);

/// Makes the contact what the whole-contact item says. An element that is not there counts as empty, but a file that
/// says nothing of the assistant, or gives no persistent id, leaves them; so the photo and all other fields.
void copy(const ImpExp_Item &item, Contact &contact);

} // namespace SyncElements
