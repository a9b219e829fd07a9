// SPDX-License-Identifier: Apache-2.0
#include "platform/records/LatinText.h"

#include "platform/records/Contact.h"

#include <algorithm>

namespace {

/// Of one character: two for a surrogate pair.
int codeUnits(const QChar *character, const QChar *end)
{
    return character->isHighSurrogate() && character + 1 != end && character[1].isLowSurrogate() ? 2 : 1;
}

bool isNonSpacingMark(const QChar *character, int units)
{
    const QChar::Category category =
        units == 2 ? QChar::category(QChar::surrogateToUcs4(character[0], character[1])) : character->category();
    return category == QChar::Mark_NonSpacing;
}

bool isAscii(const QString &text)
{
    unsigned bits = 0;
    for (const QChar character : text)
        bits |= character.unicode();
    return bits < 0x80;
}

/// latinText of a text that has nothing to decompose.
QString latinOfAscii(const QString &text)
{
    QString result(2 * text.size(), Qt::Uninitialized);
    QChar *end = result.data();
    for (const QChar character : text) {
        const char16_t unit = character.unicode();
        const QChar lower(char16_t(unit >= 'A' && unit <= 'Z' ? unit + ('a' - 'A') : unit));
        *end++ = lower;
        *end++ = lower;
    }
    return result;
}

} // namespace

QString latinText(const QString &text)
{
    if (isAscii(text))
        return latinOfAscii(text);
    const QString plain = text.toLower().normalized(QString::NormalizationForm_KD);
    QString result(2 * plain.size(), Qt::Uninitialized); // it is made for every name of a long list
    QChar *end = result.data();
    for (const QChar *character = plain.cbegin(); character != plain.cend();) {
        const int units = codeUnits(character, plain.cend());
        end = std::copy_n(character, units, end);
        if (!isNonSpacingMark(character, units))
            end = std::copy_n(character, units, end);
        character += units;
    }
    result.truncate(end - result.constData());
    return result;
}

void fillLatinNames(Contact &contact)
{
    contact.latinFirstName = latinText(contact.firstName);
    contact.latinName = latinText(contact.name);
}
