// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

/// A number as somebody wrote it, reduced to what is dialled: ASCII digits, *, # and a leading +. Blanks, dots,
/// hyphens, slashes, brackets and invisible characters are dropped, the digits of every script understood, and so is
/// a tel: address (its parameters are dropped, but a global phone-context completes the number).
struct NumberSpelling
{
    QString dialled;
    /// The same without a "(0)" that follows an international beginning (+ or 00); otherwise equal to `dialled`.
    QString withoutBracketedZero;
    /// Written with letters of the keypad behind at least three digits ("1-800-FLOWERS").
    bool hasLetters = false;
    /// Was followed by an extension ("ext. 12", "x12"), which is not part of `dialled`.
    bool hasExtension = false;

    /// Was followed by waiting signs (",", ";", "p", "w") and what is dialled after the wait, which are no part of
    /// `dialled`.
    bool hasWait = false;

    /// None for a text that is not a number, or is longer than `limit` UTF-16 units.
    static std::optional<NumberSpelling> of(const QString &raw);

    static constexpr qsizetype limit = 250;
};
