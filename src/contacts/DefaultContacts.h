// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/contacts/ContactCreation.h"
#include "src/contacts/ContactDeletion.h"
#include "src/contacts/ContactNews.h"

class DaoContact;

/// Keeps the contacts that device management gives the phone. Main thread only.
class DefaultContacts
{
public:
    DefaultContacts(DaoContact &dao, CanonicalNumbers &numbers, ContactCreation &creation, ContactDeletion &deletion,
                    ContactNews &news);

    /// Puts the contacts of this text (DefaultContactsText) in the place of all that are there, in one transaction,
    /// also when they are the same. Without capacity limit; an anonymous one is refused, and in read-only mode nothing
    /// changes. One deleted and one created event are told, each only if something was.
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
