// SPDX-License-Identifier: Apache-2.0
#pragma once

class DaoContact;

/// Keeps the latin names of contacts, by which they are found. Main thread only.
class LatinNames
{
public:
    explicit LatinNames(DaoContact &dao)
        : m_dao(dao)
    {
    }

    /// At start: gives their names to stored contacts that were written without, in one transaction.
    void checkAndFillLatinName();

private:
    DaoContact &m_dao;
};
