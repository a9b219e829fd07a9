// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/contacts/ContactCreation.h"
#include "src/contacts/ContactDeletion.h"
#include "src/contacts/ContactLookup.h"
#include "src/contacts/ContactModification.h"
#include "src/contacts/ContactNews.h"
#include "src/contacts/ContactPreview.h"
#include "src/contacts/DefaultContacts.h"
#include "src/contacts/LatinNames.h"

/// All that is done with the contacts of the phone, and the news of it.
struct Contacts
{
    Contacts(DaoContact &dao, DirectoryFields &fields, CanonicalNumbers &numbers)
        : deletion(dao, fields, news)
        , creation(dao, fields, numbers, deletion, news)
        , modification(dao, fields, numbers, news)
        , preview(dao, fields, news)
        , defaultContacts(dao, numbers, creation, deletion, news)
        , lookup(dao)
        , latinNames(dao)
    {
    }

    ContactNews news;
    ContactDeletion deletion;
    ContactCreation creation;
    ContactModification modification;
    ContactPreview preview;
    DefaultContacts defaultContacts;
    ContactLookup lookup;
    LatinNames latinNames;
};
