// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_Format.h"
#include "platform/impexp/ImpExp_Item.h"

/// The two ids of a contact and nothing else. It tells which contact of the phone is which contact of the provisioning
/// side.
class ContactMap_Item : public ImpExp_Item
{
public:
    ContactMap_Item(const QString &duid, const QString &puid)
        : ImpExp_Item(ImpExp_Format::contact)
    {
        setAttribute(ImpExp_Format::duid, duid);
        setAttribute(ImpExp_Format::puid, puid);
    }
};
