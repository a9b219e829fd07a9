// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_Exception.h"

/// The file cannot be read or written any further.
class ImpExp_FatalException : public ImpExp_Exception
{
public:
    explicit ImpExp_FatalException(const QString &reason);
    /// The place is part of the message; lines count from 1, columns from 0.
    ImpExp_FatalException(const QString &reason, qint64 line, qint64 column);

    /// Line 0 when the trouble has no place in the file.
    qint64 line() const { return m_line; }
    qint64 column() const { return m_column; }

private:
    qint64 m_line = 0;
    qint64 m_column = 0;
};
