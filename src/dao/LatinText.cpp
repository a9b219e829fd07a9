// SPDX-License-Identifier: Apache-2.0
#include "src/dao/LatinText.h"

#include <QList>

#include <algorithm>

namespace {

bool isAscii(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar character) { return character.unicode() < 0x80; });
}

/// What the whole transform comes to where there is nothing to decompose; it is made for every name of a long list.
QString doubledLowerCase(const QString &text)
{
    QString result;
    result.reserve(2 * text.size());
    for (const QChar character : text) {
        const QChar lower = character.toLower();
        result += lower;
        result += lower;
    }
    return result;
}

} // namespace

QString latinText(const QString &text)
{
    if (isAscii(text))
        return doubledLowerCase(text);
    // By code points, so that the two halves of a surrogate pair stay together.
    const QList<uint> characters = text.toLower().normalized(QString::NormalizationForm_KD).toUcs4();
    QString result;
    result.reserve(2 * characters.size());
    for (const char32_t character : characters) {
        result += QChar::fromUcs4(character);
        if (QChar::category(character) != QChar::Mark_NonSpacing)
            result += QChar::fromUcs4(character);
    }
    return result;
}

void fillLatinNames(Contact &contact)
{
    contact.latinFirstName = latinText(contact.firstName);
    contact.latinName = latinText(contact.name);
}
