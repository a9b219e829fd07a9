// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/RecordMaps.h"
#include "src/contacts/ContactDeletion.h"
#include "src/contacts/ContactNews.h"
#include "src/fields/DirectoryFields.h"
#include "src/numbers/NumbersAhead.h"

#include <optional>

class DaoContact;

/// Creates contacts under the capacity limits.
class ContactCreation
{
public:
    ContactCreation(DaoContact &dao, DirectoryFields &fields, CanonicalNumbers &numbers, ContactDeletion &deletion,
                    ContactNews &news);

    /// A ResultCode. The request id decides the type: RequestId::deviceManagement makes a default contact, without
    /// limit. RequestId::cached makes a cached contact, which takes the place of the oldest when the cache is full. Any
    /// other makes a local contact, refused when the directory is full. A cached copy gives way to whoever gets its id;
    /// an id that any other contact has, or of a form that the directory gives itself, is refused as of the wrong type.
    /// Latin names and canonical numbers are derived.
    int createLocalContact(const QString &reqId, Contact contact);

    /// Creates many at once, in one durable write, and does less than the single form: the caller's types are kept
    /// (3, 4 and 1 are skipped, as are ids that the single form refuses), nobody is refused as anonymous, and latin
    /// names are left to the next start. What cannot be created is left out of the result, which maps the
    /// instant-messaging address to the new id.
    QMapQStringQString createLocalContacts(const QString &reqId, const ListContact &contacts);

private:
    static int typeOf(const QString &reqId);
    int refusalOf(const Contact &contact);
    bool isFull(int count);
    std::optional<bool> isIdTaken(const Contact &contact);
    bool makeWay(const Contact &contact);
    bool makeRoomInCache();
    bool store(Contact &contact);
    bool isRefusedInList(const Contact &contact);
    void askAhead(NumbersAhead &numbers, int &room) const;
    bool createInList(Contact &contact);
    std::optional<ListContact> keptOf(const ListContact &created);
    void tell(const QString &reqId, const Contact &created);
    void tellList(const QString &reqId, const ListContact &created);

    DaoContact &m_dao;
    DirectoryFields &m_fields;
    CanonicalNumbers &m_numbers;
    ContactDeletion &m_deletion;
    ContactNews &m_news;
};
