// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QHash>

/// Contacts of these types are created and modified by no list.
constexpr bool isSkippedInLists(qint32 type)
{
    return type == ContactType::DeviceManagement || type == ContactType::Other || type == ContactType::Remote;
}

/// Of the contacts that a list wrote, those that it left: the last of each id.
inline ListContact lastOfEachId(const ListContact &contacts)
{
    QHash<QString, qsizetype> last;
    for (qsizetype i = 0; i < contacts.size(); ++i)
        last.insert(contacts.at(i).contactId, i);
    ListContact result;
    for (qsizetype i = 0; i < contacts.size(); ++i) {
        if (last.value(contacts.at(i).contactId) == i)
            result.append(contacts.at(i));
    }
    return result;
}
