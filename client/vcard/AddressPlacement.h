// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/vcard/VCardParser.h"
#include "platform/records/Contact.h"

/// Gives a card's addresses their places in a contact, by their types and the preferred first: of e-mail, of instant
/// messaging, and of houses. A house of no type is taken for that of the work. What has no place of its own becomes a
/// further misc pair ("email", "im", "otherAddress").
class AddressPlacement
{
public:
    explicit AddressPlacement(Contact &contact)
        : m_contact(contact)
    {
    }

    // Each takes all properties of its kind at once.
    void placeEmails(VCardProperties emails);
    void placeMessaging(VCardProperties addresses);
    void placeHouses(VCardProperties houses);

private:
    bool putHouse(const VCardProperty &house, const char *const (&keys)[5]);

    Contact &m_contact;
};

/// The misc pairs of a house: street, city, region, code, country.
inline constexpr const char *workHouse[5] = {"address", "city", "region", "zip", "country"};
inline constexpr const char *homeHouse[5] = {"homeAddress", "homeCity", "homeRegion", "homeZip", "homeCountry"};
