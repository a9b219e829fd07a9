// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/ImpExp_Exception.h"

ImpExp_Exception::ImpExp_Exception(const QString &text)
    : m_message(text)
    , m_what(text.toUtf8())
{
}

ImpExp_FatalException::ImpExp_FatalException(const QString &reason)
    : ImpExp_Exception(reason)
{
}

ImpExp_FatalException::ImpExp_FatalException(const QString &reason, qint64 line, qint64 column)
    : ImpExp_Exception(
          QStringLiteral("line %1, column %2: %3").arg(QString::number(line), QString::number(column), reason))
    , m_line(line)
    , m_column(column)
{
}
