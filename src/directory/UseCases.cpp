// SPDX-License-Identifier: Apache-2.0
#include "src/directory/UseCases.h"

UseCases::UseCases(Connection &connection, RemoteCaller &caller, DirectoryFields &fields)
    : dao(connection)
    , numbers(caller, dao)
    , dialingRules(caller)
    , latinNames(dao)
    , deletion(dao, fields, news)
    , creation(dao, fields, numbers, deletion, news)
    , modification(dao, fields, numbers, news)
    , preview(dao, fields, news)
    , lookup(dao, [this](const ListContact &contacts) { return ordering.sortContactByName(contacts, true, {}, {}); })
    , search(fields, ordering, [this](Contact &contact) { numbers.makeCanonicalNumberListWithoutPrefix(contact); })
    , remoteDirectory(caller)
    , remoteContacts(remoteDirectory, [this](const QString &contactId) { return lookup.getContactById(contactId); })
    , searchCalls(caller)
    , serviceRight(caller, fields)
{
}
