// SPDX-License-Identifier: Apache-2.0
#include "client/text/Printable.h"

#include <QJsonDocument>

namespace {

bool drivesTerminal(char16_t unit)
{
    const bool control = unit < 0x20 || (unit >= 0x7f && unit <= 0x9f);
    const bool direction = unit == 0x061c || unit == 0x200e || unit == 0x200f || (unit >= 0x2028 && unit <= 0x202e) ||
                           (unit >= 0x2066 && unit <= 0x2069);
    return control || direction || unit == 0xfeff;
}

QString jsonEscape(char16_t unit)
{
    return QStringLiteral("\\u%1").arg(int(unit), 4, 16, QLatin1Char('0'));
}

QString shownEscape(char16_t unit)
{
    switch (unit) {
    case u'\n':
        return QStringLiteral("\\n");
    case u'\r':
        return QStringLiteral("\\r");
    case u'\t':
        return QStringLiteral("\\t");
    default:
        return unit < 0x100 ? QStringLiteral("\\x%1").arg(int(unit), 2, 16, QLatin1Char('0')) : jsonEscape(unit);
    }
}

QString escaped(const QString &value, QString (*escape)(char16_t))
{
    QString result;
    result.reserve(value.size());
    for (const QChar character : value) {
        if (drivesTerminal(character.unicode()))
            result += escape(character.unicode());
        else
            result += character;
    }
    return result;
}

} // namespace

QString Printable::text(const QString &value)
{
    return escaped(value, shownEscape);
}

QByteArray Printable::json(const QJsonObject &object)
{
    // Outside its strings a compact document holds none of these characters, so replacing them in it is safe.
    const QByteArray document = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return escaped(QString::fromUtf8(document), jsonEscape).toUtf8();
}
