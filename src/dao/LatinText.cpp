// SPDX-License-Identifier: Apache-2.0
#include "src/dao/LatinText.h"

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

} // namespace

QString latinText(const QString &text)
{
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
