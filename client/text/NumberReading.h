// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The settings by which the phone's telephony reads numbers, in the usual spellings of the settings.
struct DialingRuleTexts
{
    QString countryCode;
    QString areaCode;
    QString externalPrefix;
    int minNumberLength = 0;

    /// The rules in a line: "country code 33, no area code, ...".
    QString toString() const;
};

/// Why telephony made one form of a number of another, told from the two forms and the rules. Telephony itself does not
/// tell; what follows from no rule is said to.
namespace NumberReading {

/// "a national number: its 0 gives way to +33". `dialled` is the form that can be dialled.
QString explain(const QString &dialled, const QString &canonical, const DialingRuleTexts &rules);

/// The digits of a number by which two spellings of it agree; empty when it has fewer.
QString ending(const QString &number);

} // namespace NumberReading
