// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/Initials.h"

#include <QTextBoundaryFinder>

namespace {

/// The first character as people count them, which may be several code points.
QString firstOf(const QString &text)
{
    const QString trimmed = text.trimmed();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, trimmed);
    return trimmed.left(finder.toNextBoundary());
}

} // namespace

QString initialsOf(const ContactSummary &contact)
{
    const QString initials = firstOf(contact.firstName) + firstOf(contact.name);
    return (initials.isEmpty() ? firstOf(contact.displayName()) : initials).toUpper();
}
