// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QHash>

#include <optional>

/// Finds the contact that a card is about among those that are there: by the card's UID, or by the name together with a
/// number or an address. A contact with neither number nor address is known by its name alone, by cards that have none
/// either. Numbers are compared by their last digits, so spelling and country code do not matter.
class KnownContacts
{
public:
    void add(const Contact &contact, const QString &id);
    /// Forgets what was added for an id that is empty.
    void forget(const Contact &contact);

    /// The id under which the contact was added. None when it is not known.
    std::optional<QString> find(const Contact &card) const;

private:
    QHash<QString, QString> m_ids;
};

/// The stored contact with what the card says. What the card does not mention stays.
Contact merged(Contact stored, const Contact &card);
