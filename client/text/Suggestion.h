// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

/// What somebody may have meant who mistyped a word.
namespace Suggestion {

/// The candidate that takes the fewest changed, added, dropped or swapped letters. Letter case does not count. Empty
/// when none is close.
QString closest(const QString &word, const QStringList &candidates);

/// "; did you mean list?", or nothing.
QString phrase(const QString &word, const QStringList &candidates);

} // namespace Suggestion
