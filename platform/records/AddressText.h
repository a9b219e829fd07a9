// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRegularExpression>
#include <QString>

/// Web addresses as a log may tell them.
namespace AddressText {

/// The text with the addresses in it, but without their user names and passwords. Any thread.
inline QString withoutUserInfo(QString text)
{
    if (!text.contains(QLatin1Char('@')))
        return text;
    static const QRegularExpression userInfo(QStringLiteral("([A-Za-z]://)[^/?#]*@"));
    return text.replace(userInfo, QStringLiteral("\\1"));
}

} // namespace AddressText
