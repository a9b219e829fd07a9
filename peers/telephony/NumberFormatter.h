// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/telephony/DialingRules.h"
#include "peers/telephony/NumberSpelling.h"

#include <QString>

#include <optional>
#include <string>

namespace i18n::phonenumbers {
class PhoneNumberUtil;
} // namespace i18n::phonenumbers

/// Brings numbers into the forms in which they are dialled and compared, under given dialing rules. A text that cannot
/// be read comes back unchanged. Each object belongs to a single thread; several objects may be used on several.
class NumberFormatter
{
public:
    explicit NumberFormatter(const DialingRules &rules);

    const DialingRules &rules() const { return m_rules; }

    /// What can be dialled: digits, *, # and a leading +, without what only separates them. A number with letters
    /// or with a wait is unchanged.
    QString dialable(const QString &raw) const;

    /// The E.164 form ("+33388123456"), without the outside-line prefix.
    ///
    /// A number with + is read as it stands. Any other needs the country code in the rules, and at least as many
    /// digits as a number outside has; else it is an extension, or nothing that can be known, and is unchanged.
    ///
    /// The outside-line prefix can look like the beginning of the number (0 is also a trunk prefix, and 0 with a
    /// trunk prefix looks like 00). So the number is read in these ways, and the first that gives a number which
    /// really can exist is taken; (P) needs a number that begins with the outside-line prefix and with none of the
    /// exceptions:
    ///  1. as written, when it has an international or trunk prefix (in a country without a trunk prefix: always);
    ///  2. (P) the rest, in the same way;
    ///  3. as written, behind the area code;
    ///  4. as written, as a national number without its trunk prefix or an international number without its +;
    ///  5. (P) the rest, as in 3; 6. (P) the rest, as in 4.
    /// When none exists, the first of ways 1 and 2 whose length at least is possible counts: numbering plans grow.
    /// With the prefix 0 in France, so, 00388123456 is 0 and 0388123456, 0033388123456 is international, and
    /// 00033388123456 is 0 and 0033388123456.
    ///
    /// Letters are read as on the keypad in service numbers only (freephone and the like); an extension behind the
    /// number ("x12") is dropped, and what is dialled after a wait (",,12").
    QString canonical(const QString &raw) const;

private:
    struct Reading;

    QString resolved(const NumberSpelling &spelling) const;
    std::optional<QString> canonicalInternational(const QString &text, bool hasLetters) const;
    std::optional<QString> canonicalNational(const QString &text, bool hasLetters) const;
    std::optional<QString> withoutExternalPrefix(const QString &text) const;
    bool isExtension(const QString &text) const;
    Reading readNational(const QString &text) const;
    Reading readInternational(const QString &text) const;
    Reading readInArea(const QString &text) const;
    bool exists(const Reading &reading, bool hasLetters) const;
    bool isPossible(const Reading &reading) const;
    QString e164(const Reading &reading) const;

    DialingRules m_rules;
    const i18n::phonenumbers::PhoneNumberUtil &m_library;
    std::string m_region; ///< of the country code; empty when there is none
    QString m_trunkPrefix;
    QString m_areaBeginning; ///< what stands before a number given without area code; empty when that is not known
};
