// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/vcard/VCardParser.h"
#include "platform/records/Contact.h"

/// Gives a card's telephone numbers the five number fields of a contact, by which callers are recognised. In this
/// system `personalFax` holds the internal extension. `fax` holds the person's other phone or fax. Each kind of
/// number has its field; the preferred number gets it, and the others get fields that are free. Numbers beyond the five
/// become misc pairs ("phone2", "phone3", …), so no number is lost.
class NumberPlacement
{
public:
    explicit NumberPlacement(Contact &contact)
        : m_contact(contact)
    {
    }

    /// The card's TEL properties, all at once: which field a number gets depends on the others.
    void place(VCardProperties telephones);
    /// The numbers that became misc pairs, by which no caller is recognised.
    const QStringList &unreachable() const { return m_unreachable; }

private:
    using Field = QString Contact::*;

    bool put(const QString &number, const QList<Field> &fields);
    void putAnywhere(const QString &number);
    void separateExtension();

    Contact &m_contact;
    QStringList m_unreachable;
    int m_overflow = 1;
};
