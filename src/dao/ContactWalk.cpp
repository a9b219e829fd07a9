// SPDX-License-Identifier: Apache-2.0
#include "src/dao/ContactWalk.h"

#include "src/dao/DaoMisc.h"

ContactWalk::ContactWalk(Statement &statement, ReadRow read, DaoMisc *misc)
    : m_use(statement.use())
    , m_read(read)
    , m_misc(misc)
{
}

std::optional<Contact> ContactWalk::next()
{
    if (!m_isComplete || !m_use.next())
        return std::nullopt;
    Contact contact = m_read(m_use);
    m_isComplete = !m_misc || m_misc->fill(contact);
    return m_isComplete ? std::optional(contact) : std::nullopt;
}
