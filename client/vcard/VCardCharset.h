// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// Cards that are not UTF-8. Version 2.1 lets every property have a character set of its own, and many programs write
/// that of their system without naming it.
namespace VCardCharset {

bool isUtf8(const QByteArray &bytes);

/// The card of version 2.1 with its properties in UTF-8: from the character set that the property names, from the
/// western Windows one where it names none. Lines are unfolded.
QByteArray toUtf8(const QByteArray &card);

/// UTF-8, or the western Windows character set when the bytes cannot be UTF-8.
QString decode(const QByteArray &bytes);

} // namespace VCardCharset
