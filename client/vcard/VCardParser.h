// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/vcard/VCardProperty.h"

#include <QByteArray>

/// Reads the text of one card of version 2.1, 3.0 or 4.0.
namespace VCardParser {

/// The card's properties in their order, none when the text is no card. Lenient as address books are: what cannot be
/// understood of a line is left out. `card` is UTF-8; values in other character sets are converted where they say so.
VCardProperties parse(const QByteArray &card);

} // namespace VCardParser
