// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/vcard/VCardParser.h"
#include "platform/records/Contact.h"

/// Gives a card's telephone numbers the five number fields of a contact, by which callers are recognised. In this
/// system `personalFax` holds the internal extension. `fax` holds the person's other phone or fax. Numbers beyond the
/// five become misc pairs ("phone2", "phone3", …), so no number is lost.
class NumberPlacement
{
public:
    explicit NumberPlacement(Contact &contact)
        : m_contact(contact)
    {
    }

    /// The card's TEL properties, all at once: which field a number gets depends on the others.
    void place(const VCardProperties &telephones);

private:
    using Field = QString Contact::*;

    void placeOne(const QString &number, const QList<Field> &fields);
    void separateExtension();

    Contact &m_contact;
    int m_overflow = 1;
};
