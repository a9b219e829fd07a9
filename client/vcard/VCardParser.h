// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

/// A property of a vCard, decoded.
struct VCardProperty
{
    QString name;                    ///< in upper case, without its group
    QSet<QString> types;             ///< in lower case: "work", "cell"
    QStringList values;              ///< the parts that semicolons separate; of CATEGORIES those that commas separate
    int preference = leastPreferred; ///< the lower, the rather it is used
    QByteArray bytes;                ///< the value when it is none of text but of base64, decoded

    static constexpr int leastPreferred = 101; ///< 1 to 100 are those of version 4.0

    /// Puts the preferred first and leaves the order of the card otherwise.
    static void sortByPreference(QList<VCardProperty> &properties);

    bool is(const char *type) const { return types.contains(QLatin1String(type)); }
    /// The part at the place, on a single line without blanks around it. Empty when the value has no such part.
    QString part(qsizetype index) const { return values.value(index).simplified(); }
    /// The whole value. A semicolon that should have been escaped and was not comes back as a semicolon.
    QString text() const { return values.join(QLatin1Char(';')).trimmed(); }
};

using VCardProperties = QList<VCardProperty>;

/// Reads the text of a card of version 2.1, 3.0 or 4.0.
namespace VCardParser {

/// The card's properties in their order, none when the text is no card. Lenient as address books are: what cannot be
/// understood of a line is left out. `card` is UTF-8. Values in other character sets are converted where they say so.
VCardProperties parse(const QByteArray &card);

} // namespace VCardParser

/// Cards that are not UTF-8. Version 2.1 lets every property have a character set of its own, and many programs write
/// that of their system without naming it.
namespace VCardCharset {

bool isUtf8(const QByteArray &bytes);

/// The card of version 2.1 with its properties in UTF-8. A property is converted from the character set that it names.
/// It is converted from the western Windows character set when it names none. Lines are unfolded.
QByteArray toUtf8(const QByteArray &card);

/// UTF-8, or the western Windows character set when the bytes cannot be UTF-8.
QString decode(const QByteArray &bytes);

} // namespace VCardCharset
