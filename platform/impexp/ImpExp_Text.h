// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

/// How texts and times are written in a synchronisation file.
namespace ImpExp_Text {

/// The most bytes that the text takes, escapes included. Nothing when XML cannot carry the text. Most control
/// characters, halves of surrogate pairs and the two non-characters have no form in XML, not even an escaped form.
std::optional<qint64> encodedSize(QStringView text);

/// The text with U+FFFD in the place of each unit that XML cannot carry.
QString carried(const QString &text);

/// The time in UTC as ISO 8601 has it. Empty for an invalid time.
QString ofTime(const QDateTime &time);

} // namespace ImpExp_Text
