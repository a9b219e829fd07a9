// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// How many columns of a terminal a text takes: two for a wide character (Chinese, emoji), none for a combining mark.
/// Needs a UTF-8 locale, which QCoreApplication sets.
namespace DisplayWidth {

int of(const QString &text);

/// The text if it fits the width, otherwise as much of it as fits with an ellipsis behind. `width` is at least 1.
QString cut(const QString &text, int width);

/// The text with blanks behind it up to the width.
QString padded(const QString &text, int width);

} // namespace DisplayWidth
