// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/numbers/CanonicalNumbers.h"

class DaoContact;

/// The canonical numbers of all stored contacts: made anew when the dialing rules have changed. A mark in the database
/// says that this is not finished.
class StoredNumbers
{
public:
    StoredNumbers(CanonicalNumbers &numbers, DaoContact &dao);

    /// Whether some numbers may still be those of rules that hold no longer.
    bool areStale();
    /// Sets the mark; false when it cannot be stored (logged).
    bool markStale();

    /// Makes all of them anew, some hundred contacts at a time, each time in one transaction. The last transaction
    /// takes the mark away. Whatever fails leaves it and the numbers concerned; the next start begins anew, and does
    /// not write again what is right already. No news are told.
    void fillContactsCanonicalNumbers();

private:
    bool store(const ListContact &contacts, const CanonicalNumbers::NumbersById &answer, bool isLast);
    bool store(Contact &contact);

    CanonicalNumbers &m_numbers;
    DaoContact &m_dao;
};
