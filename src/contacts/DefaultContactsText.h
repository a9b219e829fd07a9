// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

/// The text form of the contacts that device management gives the phone, as the setting "DirectoryDefaultContacts"
/// holds them.
///
/// Records are separated by "#", the fields of a record by ","; in a field these are written with a backslash before
/// them. A record has 8 fields: id, salutation, first name, last name, office number, "1" if previewed, office e-mail
/// and photo; or 20: these, then fax, mobile and home number, personal e-mail, extension, instant-messaging address,
/// and the misc pairs company, job, address, city, zip and country. A field that holds the words "escSharp" or
/// "escComa" comes out with "#" or "," in their place.
namespace DefaultContactsText {

/// The contacts in their order. A record with any other number of fields, an empty record too, is left out with a
/// warning.
ListContact contacts(const QString &text);

} // namespace DefaultContactsText
