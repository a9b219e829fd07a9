// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/RecordMaps.h"
#include "src/contacts/ContactNews.h"
#include "src/fields/DirectoryFields.h"
#include "src/numbers/NumbersAhead.h"

class Transaction;
class DaoContact;

/// Replaces stored contacts.
class ContactModification
{
public:
    ContactModification(DaoContact &dao, DirectoryFields &fields, CanonicalNumbers &numbers, ContactNews &news);

    /// A ResultCode. The contact names by its id the stored contact to replace. That keeps its type and persistent id,
    /// and its date when nothing changes. Only local and cached contacts can be replaced. The stored misc pairs become
    /// exactly the record's.
    int modifyLocalContact(const QString &reqId, Contact contact);

    /// Replaces many at once, in one durable write, and does less than the single form: nobody is refused as
    /// anonymous, latin names are the caller's; types 3, 4 and 1 are skipped, all others replaced. The result maps the
    /// ids of those replaced to the instant-messaging addresses that were stored.
    QMapQStringQString modifyLocalContacts(const QString &reqId, const ListContact &contacts);

private:
    static void keepOwn(const Contact &stored, Contact &contact);
    void tell(const QString &reqId, const Contact &before, const Contact &now);
    bool store(Contact &contact, Transaction &transaction);
    static bool commit(Transaction &transaction, const QString &contactId);
    static bool isRefusedInList(const std::optional<ListContact> &stored);
    void askAhead(NumbersAhead &numbers);
    bool replaceInList(Contact &contact, const Contact &stored);

    DaoContact &m_dao;
    DirectoryFields &m_fields;
    CanonicalNumbers &m_numbers;
    ContactNews &m_news;
};
