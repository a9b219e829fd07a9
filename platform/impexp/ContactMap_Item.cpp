// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/ContactMap_Item.h"

#include "platform/impexp/ImpExp_Format.h"

ContactMap_Item::ContactMap_Item(const QString &duid, const QString &puid)
    : ImpExp_Item(ImpExp_Format::contact)
{
    setAttribute(ImpExp_Format::duid, duid);
    setAttribute(ImpExp_Format::puid, puid);
}
