// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

/// Misc pairs of which a contact may have several of a kind: "email", "email2", "email3".
namespace MiscPairs {

/// The key of the pair at the place, from 1.
inline QString key(const QString &kind, int place)
{
    return place == 1 ? kind : kind + QString::number(place);
}

/// Adds a pair of the kind behind those that are there; none for an empty value.
inline void add(Contact &contact, const QString &kind, const QString &value)
{
    int place = 1;
    while (contact.misc.contains(key(kind, place)))
        ++place;
    if (!value.isEmpty())
        contact.misc.insert(key(kind, place), value);
}

/// The values from the place on, up to the first gap.
inline QStringList values(const Contact &contact, const QString &kind, int place = 1)
{
    QStringList values;
    for (; contact.misc.contains(key(kind, place)); ++place)
        values.append(contact.misc.value(key(kind, place)));
    return values;
}

} // namespace MiscPairs
