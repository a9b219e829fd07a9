// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDateTime>
#include <QString>

/// How texts and times are written in a synchronisation file.
namespace ImpExp_Text {

/// The most bytes that the text takes, escapes included. -1 when XML cannot carry it: most control characters, halves
/// of surrogate pairs and the two non-characters have no form there, not even an escaped one.
qint64 encodedSize(QStringView text);

/// ISO 8601 in UTC; empty for an invalid time.
QString ofTime(const QDateTime &time);

} // namespace ImpExp_Text
