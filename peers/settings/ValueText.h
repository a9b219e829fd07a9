// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/AddressText.h"

#include <QString>

/// Values of settings as the log tells them.
namespace ValueText {

/// The value without the passwords of addresses in it. Of a long value the beginning, and its length.
inline QString shown(const QString &value)
{
    constexpr qsizetype longest = 100;
    const QString text = AddressText::withoutUserInfo(value);
    if (text.size() <= longest)
        return text;
    return QStringLiteral("%1... (%2 characters)").arg(text.left(longest), QString::number(value.size()));
}

} // namespace ValueText
