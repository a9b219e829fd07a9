// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/contacts/ContactCreation.h"
#include "src/contacts/ContactDeletion.h"
#include "src/contacts/ContactNews.h"

class DaoContact;

/// Keeps the contacts that device management gives the phone.
class DefaultContacts
{
public:
    DefaultContacts(DaoContact &dao, CanonicalNumbers &numbers, ContactCreation &creation, ContactDeletion &deletion,
                    ContactNews &news);

    /// Puts the contacts of this text (DefaultContactsText) in the place of all that are there, in one transaction,
    /// also when they are the same. There is no capacity limit. An anonymous contact is refused, and in read-only mode
    /// nothing changes. A deleted event is told if contacts were deleted, a created event if contacts were created.
    void setDefaultContacts(const QString &value);

private:
    QStringList remove(const ListContact &contacts);
    bool create(const ListContact &contacts);

    DaoContact &m_dao;
    CanonicalNumbers &m_numbers;
    ContactCreation &m_creation;
    ContactDeletion &m_deletion;
    ContactNews &m_news;
};
