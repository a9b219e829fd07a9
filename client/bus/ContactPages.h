// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <functional>

/// Fetches many contacts through a call that answers a few: page by page. The pages become smaller where the contacts
/// are so large that the bus does not carry as many at once.
class ContactPages
{
public:
    /// Answers up to `length` contacts from `start` on.
    using Fetch = std::function<ListContact(int start, int length)>;

    explicit ContactPages(Fetch fetch);

    static constexpr int toTheEnd = -1;

    /// Reads `length` contacts from `start` on, or all of them to the end. They are ordered by name. Throws what the
    /// call throws.
    ListContact read(int start, int length);

    static constexpr int firstPageLength = 500;

private:
    ListContact nextPage(int start, int length);

    Fetch m_fetch;
    int m_pageLength = firstPageLength;
};

class DirectoryService;

/// All contacts of a kind, in no order, however many there are. Throws what DirectoryService throws.
ListContact contactsOfType(const DirectoryService &directory, qint32 type);

/// Orders contacts as a person looks for them: last name, then first name, in the order of the user's language.
void sortByName(ListContact &contacts);
