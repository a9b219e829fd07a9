// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_Item.h"

/// The two ids of a contact and nothing else: which contact of the phone is which of the provisioning side.
class ContactMap_Item : public ImpExp_Item
{
public:
    ContactMap_Item(const QString &duid, const QString &puid);
};
