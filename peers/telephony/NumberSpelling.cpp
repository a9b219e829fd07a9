// SPDX-License-Identifier: Apache-2.0
#include "peers/telephony/NumberSpelling.h"

#include <QRegularExpression>
#include <QStringView>

namespace {

constexpr QLatin1String telScheme("tel:");
constexpr QLatin1String globalContext(";phone-context=+");
constexpr char keypad[] = "22233344455566677778889999"; // of A to Z

/// The number of a tel: address, any other text as it is.
QString withoutScheme(const QString &text)
{
    if (!text.startsWith(telScheme, Qt::CaseInsensitive))
        return text;
    const QString number = text.section(QLatin1Char(';'), 0, 0).mid(telScheme.size());
    const qsizetype context = text.indexOf(globalContext, 0, Qt::CaseInsensitive);
    if (context < 0 || number.startsWith(QLatin1Char('+')))
        return number;
    const QString code = text.mid(context + globalContext.size()).section(QLatin1Char(';'), 0, 0);
    return QLatin1Char('+') + code + number;
}

bool isSeparator(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Separator_Space:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
    case QChar::Punctuation_Dash:
    case QChar::Punctuation_Open:
    case QChar::Punctuation_Close:
    case QChar::Other_Format: // direction marks, which address books copy along
        return true;
    default:
        return QStringView(u"\t./~\u2212\u00b7\uff0e\uff0f").contains(QChar(char16_t(character)));
    }
}

/// What is dialled for the character; none when it is not dialled.
std::optional<char> dialledFor(char32_t character)
{
    const int digit = QChar::digitValue(character);
    if (digit >= 0 && QChar::category(character) == QChar::Number_DecimalDigit)
        return char('0' + digit);
    if (character == U'\uff0b')
        return '+';
    if (character == U'+' || character == U'*' || character == U'#')
        return char(character);
    return std::nullopt;
}

bool isInternational(const QString &dialled)
{
    return dialled.startsWith(QLatin1Char('+')) || dialled.startsWith(QLatin1String("00"));
}

/// Takes the extension off the end of the text.
bool takeExtension(QString &text)
{
    if (!text.contains(QLatin1Char('x'), Qt::CaseInsensitive))
        return false;
    static const QRegularExpression extension(
        QStringLiteral("(?<=[0-9)])[\\s,;]*(?:ext(?:ension)?|x)[.:=]?\\s*[0-9]{1,7}$"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = extension.match(text);
    if (match.hasMatch())
        text.truncate(match.capturedStart());
    return match.hasMatch();
}

/// Takes off what is dialled when the number has answered. A capital letter may be one of the keypad.
bool takeWait(QString &text)
{
    static const QRegularExpression wait(
        QStringLiteral("(?<=[0-9)*#])\\s*(?:[,;pw]|[PW](?=[0-9]))[,;pwPW0-9*#\\s.-]*$"));
    const QRegularExpressionMatch match = wait.match(text);
    if (match.hasMatch())
        text.truncate(match.capturedStart());
    return match.hasMatch();
}

/// Adds one character to the number; false when it has no place in one.
bool append(NumberSpelling &number, char32_t character)
{
    constexpr int digitsBeforeLetters = 3;
    const bool isLetter = character >= U'A' && character <= U'Z';
    if (isLetter && number.dialled.size() >= digitsBeforeLetters) {
        number.hasLetters = true;
        number.dialled += QLatin1Char(keypad[character - U'A']);
        return true;
    }
    const std::optional<char> dialled = dialledFor(character);
    if (!dialled)
        return isSeparator(character);
    if (*dialled == '+' && !number.dialled.isEmpty())
        return false;
    number.dialled += QLatin1Char(*dialled);
    return true;
}

bool spell(NumberSpelling &number, const QString &text)
{
    for (const char32_t character : text.toUcs4()) {
        if (!append(number, character))
            return false;
    }
    return !number.dialled.isEmpty() && number.dialled != QLatin1String("+");
}

} // namespace

std::optional<NumberSpelling> NumberSpelling::of(const QString &raw)
{
    if (raw.size() > limit)
        return std::nullopt;
    QString text = withoutScheme(raw.trimmed());
    NumberSpelling number;
    number.hasExtension = takeExtension(text);
    number.hasWait = takeWait(text);
    if (!spell(number, text))
        return std::nullopt;
    number.withoutBracketedZero = number.dialled;
    const qsizetype zero = text.indexOf(QLatin1String("(0)"));
    NumberSpelling before;
    if (zero > 0 && spell(before, text.left(zero)) && isInternational(before.dialled))
        number.withoutBracketedZero.remove(before.dialled.size(), 1);
    return number;
}
