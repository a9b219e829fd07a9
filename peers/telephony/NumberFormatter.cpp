// SPDX-License-Identifier: Apache-2.0
#include "peers/telephony/NumberFormatter.h"

#include <phonenumbers/phonenumberutil.h>

#include <algorithm>
#include <vector>

using i18n::phonenumbers::PhoneNumber;
using i18n::phonenumbers::PhoneNumberUtil;

namespace {

constexpr char noRegion[] = "ZZ";
constexpr QLatin1Char plus('+');
constexpr QLatin1Char zero('0');
constexpr QLatin1String internationalPrefix("00");
// 15 digits of a number and whatever is dialled before it; the library takes milliseconds over texts much longer.
constexpr qsizetype longestDialled = 32;

/// The main region of a country calling code; empty when the code belongs to no country.
std::string regionOf(const PhoneNumberUtil &library, const QString &countryCode)
{
    std::string region;
    library.GetRegionCodeForCountryCode(countryCode.toInt(), &region);
    const bool isCountry = !region.empty() && region != noRegion && region != "001";
    return isCountry ? region : std::string();
}

QString areaBeginning(const QString &trunkPrefix, QString areaCode)
{
    if (areaCode.isEmpty())
        return QString();
    while (trunkPrefix.startsWith(zero) && areaCode.startsWith(zero))
        areaCode.remove(0, 1);
    return trunkPrefix + areaCode;
}

bool isServiceNumber(PhoneNumberUtil::PhoneNumberType type)
{
    return type != PhoneNumberUtil::FIXED_LINE && type != PhoneNumberUtil::MOBILE &&
           type != PhoneNumberUtil::FIXED_LINE_OR_MOBILE && type != PhoneNumberUtil::UNKNOWN;
}

/// A number with + in the form of a tel: address, in which the library need not look for it.
std::string asAddress(const std::string &number)
{
    constexpr std::size_t context = 3; // how many of its characters, + among them
    return number.size() > context ? number.substr(context) + ";phone-context=" + number.substr(0, context) : number;
}

} // namespace

/// What the library made of a text.
struct NumberFormatter::Reading
{
    PhoneNumber number;
    bool isReadable = false;
    bool isComplete = false; ///< has an international or trunk prefix, or needs none
};

NumberFormatter::NumberFormatter(const DialingRules &rules)
    : m_rules(rules)
    , m_library(*PhoneNumberUtil::GetInstance())
    , m_region(regionOf(m_library, rules.countryCode))
{
    if (m_region.empty())
        return;
    std::string trunkPrefix;
    m_library.GetNddPrefixForRegion(m_region, true, &trunkPrefix);
    m_trunkPrefix = QString::fromStdString(trunkPrefix);
    m_areaBeginning = areaBeginning(m_trunkPrefix, rules.areaCode);
}

QString NumberFormatter::dialable(const QString &raw) const
{
    const std::optional<NumberSpelling> spelling = NumberSpelling::of(raw);
    const bool isPlain = spelling && !spelling->hasLetters && !spelling->hasExtension && !spelling->hasWait;
    return isPlain ? resolved(*spelling) : raw;
}

QString NumberFormatter::canonical(const QString &raw) const
{
    const std::optional<NumberSpelling> spelling = NumberSpelling::of(raw);
    if (!spelling || spelling->dialled.size() > longestDialled)
        return raw;
    const QString text = resolved(*spelling);
    const std::optional<QString> result = text.startsWith(plus) ? canonicalInternational(text, spelling->hasLetters)
                                                                : canonicalNational(text, spelling->hasLetters);
    return result.value_or(spelling->hasWait ? text : raw);
}

/// Decides about a bracketed zero: in most countries it is not dialled from abroad, in some it is part of the number.
QString NumberFormatter::resolved(const NumberSpelling &spelling) const
{
    if (spelling.withoutBracketedZero == spelling.dialled || spelling.dialled.size() > longestDialled)
        return spelling.dialled;
    const bool hasPlus = spelling.dialled.startsWith(plus);
    const QString international = hasPlus ? spelling.dialled : plus + spelling.dialled.mid(internationalPrefix.size());
    const Reading reading = readInternational(international);
    const bool zeroBelongs = exists(reading, false) && e164(reading) == international;
    return zeroBelongs ? spelling.dialled : spelling.withoutBracketedZero;
}

std::optional<QString> NumberFormatter::canonicalInternational(const QString &text, bool hasLetters) const
{
    const Reading reading = readInternational(text);
    // The length costs little to compare, the numbering plan much.
    if ((!hasLetters && isPossible(reading)) || exists(reading, hasLetters))
        return e164(reading);
    return std::nullopt;
}

std::optional<QString> NumberFormatter::canonicalNational(const QString &text, bool hasLetters) const
{
    if (m_region.empty() || isExtension(text))
        return std::nullopt;
    std::vector<QString> texts{text};
    if (const std::optional<QString> rest = withoutExternalPrefix(text))
        texts.push_back(*rest);

    std::vector<Reading> readings;
    for (const QString &candidate : texts) {
        readings.push_back(readNational(candidate));
        if (readings.back().isComplete && exists(readings.back(), hasLetters))
            return e164(readings.back());
    }
    for (size_t i = 0; i < texts.size(); ++i) {
        const Reading local = readInArea(texts[i]);
        if (exists(local, hasLetters))
            return e164(local);
        if (exists(readings[i], hasLetters))
            return e164(readings[i]);
    }
    const auto possible = std::find_if(readings.cbegin(), readings.cend(), [this](const Reading &reading) {
        return reading.isComplete && isPossible(reading);
    });
    return possible == readings.cend() || hasLetters ? std::nullopt : std::optional(e164(*possible));
}

std::optional<QString> NumberFormatter::withoutExternalPrefix(const QString &text) const
{
    if (m_rules.externalPrefix.isEmpty() || !text.startsWith(m_rules.externalPrefix))
        return std::nullopt;
    const bool isException = std::any_of(m_rules.prefixExceptions.cbegin(), m_rules.prefixExceptions.cend(),
                                         [&text](const QString &beginning) { return text.startsWith(beginning); });
    return isException ? std::nullopt : std::optional(text.mid(m_rules.externalPrefix.size()));
}

bool NumberFormatter::isExtension(const QString &text) const
{
    const auto digits = std::count_if(text.cbegin(), text.cend(), [](QChar character) { return character.isDigit(); });
    return digits < m_rules.minNumberLength;
}

NumberFormatter::Reading NumberFormatter::readNational(const QString &text) const
{
    Reading reading;
    // To the library * is a separator; to a telephone it begins a service code.
    if (text.contains(QLatin1Char('*')) || text.contains(QLatin1Char('#')))
        return reading;
    reading.isReadable = m_library.ParseAndKeepRawInput(text.toStdString(), m_region, &reading.number) ==
                         PhoneNumberUtil::NO_PARSING_ERROR;
    const auto source = reading.number.country_code_source();
    const bool isInternational = reading.isReadable && source == PhoneNumber::FROM_NUMBER_WITH_IDD;
    if (!isInternational && text.startsWith(internationalPrefix)) {
        // Other countries dial 00 differently, but write it as well.
        Reading international = readInternational(plus + text.mid(internationalPrefix.size()));
        if (exists(international, false))
            return international;
    }
    const bool hasOwnCode = source != PhoneNumber::FROM_DEFAULT_COUNTRY && m_trunkPrefix != m_rules.countryCode;
    reading.isComplete = isInternational || (text.startsWith(m_trunkPrefix) && !hasOwnCode);
    return reading;
}

NumberFormatter::Reading NumberFormatter::readInternational(const QString &text) const
{
    Reading reading;
    if (text.contains(QLatin1Char('*')) || text.contains(QLatin1Char('#')))
        return reading;
    const std::string number = asAddress(text.toStdString());
    reading.isReadable = m_library.Parse(number, noRegion, &reading.number) == PhoneNumberUtil::NO_PARSING_ERROR;
    reading.isComplete = true;
    return reading;
}

NumberFormatter::Reading NumberFormatter::readInArea(const QString &text) const
{
    // Behind a zero there is an area code already.
    const bool hasAreaCode = m_trunkPrefix.startsWith(zero) && text.startsWith(zero);
    return m_areaBeginning.isEmpty() || hasAreaCode ? Reading() : readNational(m_areaBeginning + text);
}

bool NumberFormatter::exists(const Reading &reading, bool hasLetters) const
{
    return reading.isReadable && m_library.IsValidNumber(reading.number) &&
           (!hasLetters || isServiceNumber(m_library.GetNumberType(reading.number)));
}

bool NumberFormatter::isPossible(const Reading &reading) const
{
    if (!reading.isReadable || m_library.IsPossibleNumberWithReason(reading.number) != PhoneNumberUtil::IS_POSSIBLE)
        return false;
    // A trunk prefix that could not be taken off fills the length of a number that is too short.
    std::string region;
    std::string trunkPrefix;
    std::string national;
    m_library.GetRegionCodeForCountryCode(reading.number.country_code(), &region);
    m_library.GetNddPrefixForRegion(region, true, &trunkPrefix);
    m_library.GetNationalSignificantNumber(reading.number, &national);
    return trunkPrefix.empty() || national.front() != '0';
}

QString NumberFormatter::e164(const Reading &reading) const
{
    std::string text;
    m_library.Format(reading.number, PhoneNumberUtil::E164, &text);
    return QString::fromStdString(text);
}
