// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// The name of an entry as text.
namespace DnText {
/// The DN as the directory library writes it, so that an entry is called the same in a file and on any server. Empty
/// when the text is no DN.
QString normalized(const QByteArray &dn);

/// Whether the entry is the other entry or stands somewhere below it; both normalized. Everything is below "".
bool isWithin(const QString &dn, const QString &base);

} // namespace DnText
