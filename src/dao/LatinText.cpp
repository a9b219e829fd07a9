// SPDX-License-Identifier: Apache-2.0
#include "src/dao/LatinText.h"

#include <QList>

QString latinText(const QString &text)
{
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
