// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"
#include "src/dao/Statement.h"

#include <optional>

class DaoMisc;

/// Contacts of a statement one after the other, as it finds them: for work that takes so many that it must pause
/// between them. Must be gone before the DaoContact that made it; until then the store must not be written.
class ContactWalk
{
public:
    using ReadRow = Contact (*)(const Statement::Use &row);

    /// `misc`: fills the misc pairs; null: they are not wanted.
    ContactWalk(Statement &statement, ReadRow read, DaoMisc *misc = nullptr);

    /// Nothing behind the last contact, and where the next cannot be read (logged).
    std::optional<Contact> next();
    /// Whether there are no more, once `next` has answered with nothing.
    bool isAtEnd() const { return m_isComplete && m_use.isAtEnd(); }

private:
    Statement::Use m_use;
    ReadRow m_read;
    DaoMisc *m_misc;
    bool m_isComplete = true;
};
