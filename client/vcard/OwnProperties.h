// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/vcard/VCardParser.h"
#include "platform/records/Contact.h"

#include <QByteArray>

/// Properties of our own, X-KESTIN-…, for what a card cannot say otherwise: X-KESTIN-MELODY and so on for every field
/// that a client may set, X-KESTIN-MISC:key;value, X-KESTIN-NO-MISC:key, X-KESTIN-ISPREVIEWED and X-KESTIN-ISPRIVATE.
/// What they say goes before what the other properties do. Values are percent-encoded where a card could change them.
/// There is none for the photo: a card from elsewhere must not name a file of this phone.
namespace OwnProperties {

/// (name, value) of the properties that make `wanted` of the contact that is `understood` without them.
QList<std::pair<QByteArray, QByteArray>> between(const Contact &wanted, const Contact &understood);

bool isOwn(const QString &name);
/// Does what the property says. A property that is not known says nothing.
void apply(const VCardProperty &property, Contact &contact);

} // namespace OwnProperties
