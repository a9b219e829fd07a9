// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

class DaoContact;

/// Keeps the latin names of contacts, by which they are found. Main thread only.
class LatinNames
{
public:
    explicit LatinNames(DaoContact &dao)
        : m_dao(dao)
    {
    }

    /// Derives both latin names; what the caller had put there is overwritten.
    static void fill(Contact &contact);

    /// At start: gives their names to stored contacts that were written without, in one transaction.
    void checkAndFillLatinName();

private:
    DaoContact &m_dao;
};
