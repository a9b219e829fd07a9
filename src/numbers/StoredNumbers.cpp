// SPDX-License-Identifier: Apache-2.0
#include "src/numbers/StoredNumbers.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/Connection.h"
#include "src/dao/DaoContact.h"
#include "src/dao/Transaction.h"

#include <QSet>

namespace {

constexpr int atATime = 200;

/// How many of the contacts one call takes: were their numbers ever so long, it must go over the bus.
qsizetype portionOf(const ListContact &contacts)
{
    constexpr qsizetype largest = 1024 * 1024; // characters
    qsizetype size = 0;
    qsizetype count = 0;
    for (; count < contacts.size() && (count == 0 || size < largest); ++count) {
        for (const QString &number : CanonicalNumbers::rawNumbers(contacts.at(count)))
            size += number.size();
    }
    return count;
}

} // namespace

StoredNumbers::StoredNumbers(CanonicalNumbers &numbers, DaoContact &dao)
    : m_numbers(numbers)
    , m_dao(dao)
{
}

bool StoredNumbers::areStale()
{
    return m_dao.connection().userVersion() != Connection::numbersUpToDate;
}

bool StoredNumbers::markStale()
{
    return m_dao.connection().setUserVersion(Connection::numbersStale);
}

void StoredNumbers::fillContactsCanonicalNumbers()
{
    const NumbersOfMany numbersOfAll(m_numbers);
    bool isWhole = true;
    bool isLast = false;
    int start = 0;
    while (!isLast && !m_numbers.isSilent()) {
        std::optional<ListContact> contacts = m_dao.getAllContact(start, atATime);
        if (!contacts)
            return;
        if (start == 0 && contacts->isEmpty())
            KestinLogger::debug("fillContactsCanonicalNumbers No contact to canonize");
        const qsizetype portion = portionOf(*contacts);
        isLast = contacts->size() < atATime && portion == contacts->size();
        contacts->resize(portion);
        start += int(portion);
        const auto answer = m_numbers.makeCanonicalNumberMapWithoutPrefix(*contacts);
        isWhole = isWhole && answer;
        if (!store(*contacts, answer.value_or(CanonicalNumbers::NumbersById()), isLast && isWhole))
            return;
    }
}

/// With the last of them the mark goes.
bool StoredNumbers::store(const ListContact &contacts, const CanonicalNumbers::NumbersById &answer, bool isLast)
{
    Transaction transaction(m_dao.connection());
    if (!transaction.isActive())
        return false;
    QSet<QString> unknown(answer.keyBegin(), answer.keyEnd());
    for (Contact contact : contacts) {
        unknown.remove(contact.contactId);
        const Contact before = contact;
        // What is right already is not written: flash wears.
        if (CanonicalNumbers::setCanonicalNumbers(contact, answer.value(contact.contactId)) && contact != before &&
            !store(contact))
            return false;
    }
    for (const QString &id : unknown)
        KestinLogger::error("fillContactsCanonicalNumbers Unknown contactID %1", id);
    return (!isLast || m_dao.connection().setUserVersion(Connection::numbersUpToDate)) && transaction.commit();
}

bool StoredNumbers::store(Contact &contact)
{
    return m_dao.updateContact(contact) && m_dao.misc().replacePairs(contact.contactId, contact.misc);
}
