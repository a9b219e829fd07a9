// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/ShownText.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace {

/// The first character as people count them, which may be several code points.
QString firstOf(const QString &text)
{
    const QString trimmed = text.trimmed();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, trimmed);
    constexpr qsizetype longest = 8; // there is no end of what may be put on top of a letter
    return trimmed.left(std::min<qsizetype>(finder.toNextBoundary(), longest));
}

/// What turns the text behind it round, of which there may be none at the end.
bool isDirection(QChar character)
{
    return (character >= QChar(0x202a) && character <= QChar(0x202e)) ||
           (character >= QChar(0x2066) && character <= QChar(0x2069));
}

} // namespace

QString oneLine(const QString &text)
{
    constexpr qsizetype longest = 300; // no screen shows more
    QString line = text.left(longest);
    for (QChar &character : line) {
        if (character.category() == QChar::Other_Control || isDirection(character))
            character = QLatin1Char(' ');
    }
    return line.simplified();
}

QString initialsOf(const ContactSummary &contact)
{
    const QString initials = firstOf(contact.firstName) + firstOf(contact.name);
    return (initials.isEmpty() ? firstOf(contact.displayName()) : initials).toUpper();
}
