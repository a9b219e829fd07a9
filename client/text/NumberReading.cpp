// SPDX-License-Identifier: Apache-2.0
#include "client/text/NumberReading.h"

#include <QStringList>

#include <algorithm>

namespace {

constexpr QLatin1Char plus('+');
constexpr QLatin1Char zero('0');

QString digitsOf(const QString &text)
{
    QString digits;
    for (const QChar character : text) {
        if (character.isDigit())
            digits += character;
    }
    return digits;
}

QString withoutZeros(QString digits)
{
    while (digits.startsWith(zero))
        digits.remove(0, 1);
    return digits;
}

QString unchanged(const QString &number, const QString &country, const DialingRuleTexts &rules)
{
    if (digitsOf(number).isEmpty())
        return QStringLiteral("as it stands: there is no digit in it");
    if (number.startsWith(plus))
        return QStringLiteral("it has its + already");
    if (digitsOf(number).size() < rules.minNumberLength)
        return QStringLiteral("an extension: it has fewer than %1 digits").arg(rules.minNumberLength);
    if (country.isEmpty())
        return QStringLiteral("as it stands: without a country code only numbers with + are understood");
    return QStringLiteral("as it stands: telephony knows no such number");
}

/// Empty when the country code does not tell it.
QString asNational(const QString &number, const QString &canonical, const QString &country, const QString &area)
{
    const QString front = plus + country;
    if (country.isEmpty())
        return {};
    if (number.startsWith(zero) && canonical == front + number.mid(1))
        return QStringLiteral("a national number: its 0 gives way to %1").arg(front);
    if (canonical == front + number)
        return QStringLiteral("a national number: %1 is put in front").arg(front);
    if (!area.isEmpty() && canonical == front + area + number)
        return QStringLiteral("a number of the area: %1 and the area code %2 are put in front").arg(front, area);
    return {};
}

} // namespace

QString DialingRuleTexts::toString() const
{
    const auto named = [](const QString &name, const QString &value) {
        return value.isEmpty() ? QStringLiteral("no %1").arg(name) : QStringLiteral("%1 %2").arg(name, value);
    };
    return QStringList{named(QStringLiteral("country code"), countryCode), named(QStringLiteral("area code"), areaCode),
                       named(QStringLiteral("outside line"), externalPrefix),
                       QStringLiteral("an extension has fewer than %1 digits").arg(minNumberLength)}
        .join(QLatin1String(", "));
}

QString NumberReading::explain(const QString &dialled, const QString &canonical, const DialingRuleTexts &rules)
{
    const QString country = withoutZeros(digitsOf(rules.countryCode));
    if (canonical == dialled)
        return unchanged(dialled, country, rules);
    if (dialled.startsWith(plus))
        return QStringLiteral("an international number");
    if (canonical == plus + dialled.mid(2) && dialled.startsWith(QLatin1String("00")))
        return QStringLiteral("an international number: 00 stands for +");
    if (canonical == plus + dialled)
        return QStringLiteral("an international number without its +");
    const QString national = asNational(dialled, canonical, country, withoutZeros(digitsOf(rules.areaCode)));
    if (!national.isEmpty())
        return national;
    const QString &prefix = rules.externalPrefix;
    if (!prefix.isEmpty() && dialled.startsWith(prefix))
        return QStringLiteral("the outside line %1 is taken off, then %2")
            .arg(prefix, explain(dialled.mid(prefix.size()), canonical, rules));
    return QStringLiteral("telephony reads it so by a rule of its own");
}

QString NumberReading::ending(const QString &number)
{
    constexpr qsizetype length = 8;
    const QString digits = digitsOf(number);
    return digits.size() < length ? QString() : digits.right(length);
}
