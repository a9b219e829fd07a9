// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/KestinException.h"

KestinException::KestinException(const QString &moduleName, int errorType, const QString &text)
    : m_module(moduleName)
    , m_type(errorType)
    , m_message(text)
    , m_what(text.toUtf8())
{
}
