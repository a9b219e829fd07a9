// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// Values as they may be written to a terminal. What a contact's name holds was chosen by somebody else: characters
/// that drive a terminal or turn the direction of the text around are shown escaped, never sent as they are.
namespace Printable {

/// One line: control characters as \n, \t or \x1b, direction marks and line separators as \u202e.
QString text(const QString &value);

/// The object on one line, as JSON. Characters that `text` escapes are escaped in JSON's own way, so a reader gets the
/// value unchanged.
QByteArray json(const QJsonObject &object);

} // namespace Printable
