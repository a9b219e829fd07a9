// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/contacts/ContactNews.h"
#include "src/fields/DirectoryFields.h"

class DaoContact;

/// Deletes contacts.
class ContactDeletion
{
public:
    ContactDeletion(DaoContact &dao, DirectoryFields &fields, ContactNews &news);

    /// A ResultCode. Contacts of the types Remote, Other and ManagerAssistant are not deleted.
    int deleteLocalContact(const QString &reqId, const QString &idContact);

    /// Makes room for another contact: deletes the cached copy of this id, and no contact of another type that has the
    /// same id. False only when the database refused; a copy that is gone is no failure.
    bool dropCachedCopy(const QString &idContact);
    /// The same of all cached copies of the person whom this contact now keeps: those with an office number among the
    /// contact's canonical numbers.
    bool deleteCachedContactsWithMatchingOfficePhone(const Contact &contact);

private:
    void tell(const QString &reqId, const Contact &deleted);

    DaoContact &m_dao;
    DirectoryFields &m_fields;
    ContactNews &m_news;
};
