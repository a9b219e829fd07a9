// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/contacts/ContactNews.h"
#include "src/fields/DirectoryFields.h"

class DaoContact;

/// Deletes contacts. Main thread only.
class ContactDeletion
{
public:
    ContactDeletion(DaoContact &dao, DirectoryFields &fields, ContactNews &news);

    /// A ResultCode. Types 1, 4 and 5 are not deleted.
    int deleteLocalContact(const QString &reqId, const QString &idContact);

    /// Deletes the cached copies of the person whom this contact now keeps: those with an office number among the
    /// contact's canonical numbers. -1 when one of them could not be deleted.
    int deleteCachedContactsWithMatchingOfficePhone(const Contact &contact);

private:
    DaoContact &m_dao;
    DirectoryFields &m_fields;
    ContactNews &m_news;
};
