// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/ImpExp_Exception.h"

ImpExp_Exception::ImpExp_Exception(const QString &text)
    : m_message(text)
    , m_what(text.toUtf8())
{
}
