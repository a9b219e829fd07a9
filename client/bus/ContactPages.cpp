// SPDX-License-Identifier: Apache-2.0
#include "client/bus/ContactPages.h"

#include "client/bus/CommandFailure.h"
#include "client/bus/DirectoryService.h"

#include <algorithm>
#include <limits>

ContactPages::ContactPages(Fetch fetch)
    : m_fetch(std::move(fetch))
{
}

ListContact ContactPages::nextPage(int start, int length)
{
    while (true) {
        try {
            return m_fetch(start, std::min(length, m_pageLength));
        } catch (const BusFailure &failure) {
            if (!failure.isTooLarge() || m_pageLength == 1)
                throw;
            m_pageLength /= 2;
        }
    }
}

ListContact ContactPages::read(int start, int length)
{
    int left = length == toTheEnd ? std::numeric_limits<int>::max() - start : length;
    ListContact contacts;
    while (left > 0) {
        const ListContact page = nextPage(start, left);
        contacts += page;
        if (page.size() < std::min(left, m_pageLength))
            break;
        start += int(page.size());
        left -= int(page.size());
    }
    sortByName(contacts);
    return contacts;
}

void sortByName(ListContact &contacts)
{
    std::stable_sort(contacts.begin(), contacts.end(), [](const Contact &left, const Contact &right) {
        const int byName = QString::localeAwareCompare(left.name, right.name);
        return byName != 0 ? byName < 0 : QString::localeAwareCompare(left.firstName, right.firstName) < 0;
    });
}

ListContact contactsOfType(const DirectoryService &directory, qint32 type)
{
    try {
        return directory.byType(type);
    } catch (const BusFailure &failure) {
        if (!failure.isTooLarge())
            throw;
    }
    // The directory answers all contacts of a kind at once, and the bus does not carry so many: all are paged through.
    ContactPages pages([&directory](int start, int length) { return directory.page(start, length); });
    ListContact contacts = pages.read(0, ContactPages::toTheEnd);
    contacts.removeIf([type](const Contact &contact) { return contact.type != type; });
    return contacts;
}
