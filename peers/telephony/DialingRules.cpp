// SPDX-License-Identifier: Apache-2.0
#include "peers/telephony/DialingRules.h"

#include <QRegularExpression>

namespace {

constexpr QLatin1String countryCodeKey("DialingRuleCountryCode");
constexpr QLatin1String areaCodeKey("DialingRuleAreaCode");
constexpr QLatin1String externalPrefixKey("DialingRuleExternalPrefix");
constexpr QLatin1String minNumberLengthKey("DialingRuleMinNumberLength");
constexpr QLatin1String prefixExceptionsKey("DialingRuleExternalPrefixExceptions");

QString kept(const QString &text, QLatin1String characters)
{
    QString result;
    for (const QChar character : text) {
        if (characters.contains(character))
            result += character;
    }
    return result;
}

constexpr QLatin1String digits("0123456789");
constexpr QLatin1String dialable("0123456789*#");

QString withoutLeadingZeros(QString text)
{
    while (text.startsWith(QLatin1Char('0')))
        text.remove(0, 1);
    return text;
}

QStringList exceptionsOf(const QString &value)
{
    static const QRegularExpression separator(QStringLiteral("[,;\\s]+"));
    QStringList exceptions;
    const QStringList texts = value.split(separator, Qt::SkipEmptyParts);
    for (const QString &text : texts) {
        const QString exception = kept(text, dialable);
        if (!exception.isEmpty())
            exceptions.append(exception);
    }
    return exceptions;
}

} // namespace

QStringList DialingRules::settingKeys()
{
    return {countryCodeKey, areaCodeKey, externalPrefixKey, minNumberLengthKey, prefixExceptionsKey};
}

void DialingRules::set(const QString &settingKey, const QString &value)
{
    if (settingKey == countryCodeKey)
        countryCode = withoutLeadingZeros(kept(value, digits));
    else if (settingKey == areaCodeKey)
        areaCode = kept(value, digits);
    else if (settingKey == externalPrefixKey)
        externalPrefix = kept(value, dialable);
    else if (settingKey == minNumberLengthKey)
        minNumberLength = value.toInt();
    else if (settingKey == prefixExceptionsKey)
        prefixExceptions = exceptionsOf(value);
}
