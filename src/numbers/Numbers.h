// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/numbers/DialingRuleCopies.h"

class DaoContact;

/// All about canonical numbers: those of a contact, those of all stored contacts, and the rules that they follow.
struct Numbers
{
    /// `settings` reaches the settings manager.
    Numbers(RemoteCaller &telephony, RemoteCaller &settings, DaoContact &dao)
        : canonical(telephony)
        , stored(canonical, dao)
        , dialingRules(settings, stored)
    {
    }

    CanonicalNumbers canonical;
    StoredNumbers stored;
    DialingRuleCopies dialingRules;
};
