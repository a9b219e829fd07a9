// SPDX-License-Identifier: Apache-2.0
#pragma once

class DaoContact;

/// Keeps the latin names of contacts, by which they are found.
class LatinNames
{
public:
    explicit LatinNames(DaoContact &dao)
        : m_dao(dao)
    {
    }

    /// At start: gives their latin names to stored contacts that were written without, in one statement. Their dates
    /// and misc pairs stay; a contact that has no last name, and so no latin last name, is not written.
    void checkAndFillLatinName();

private:
    DaoContact &m_dao;
};
