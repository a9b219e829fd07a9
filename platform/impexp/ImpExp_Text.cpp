// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/ImpExp_Text.h"

namespace {

/// Nothing for a unit that may not stand alone.
std::optional<int> sizeOfUnit(char16_t unit)
{
    constexpr int escaped = 6;
    switch (unit) {
    case u'\t':
    case u'\n':
    case u'\r':
    case u'&':
    case u'<':
    case u'>':
    case u'"':
    case u'\'':
        return escaped;
    default:
        break;
    }
    if (unit < 0x20 || unit > 0xfffd || QChar::isSurrogate(unit))
        return std::nullopt;
    return unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
}

bool isPair(QStringView text, qsizetype place)
{
    return text[place].isHighSurrogate() && place + 1 < text.size() && text[place + 1].isLowSurrogate();
}

} // namespace

QString ImpExp_Text::carried(const QString &text)
{
    QString result = text;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isPair(text, i))
            ++i;
        else if (!sizeOfUnit(text[i].unicode()))
            result[i] = QChar::ReplacementCharacter;
    }
    return result;
}

std::optional<qint64> ImpExp_Text::encodedSize(QStringView text)
{
    constexpr int pair = 4;
    qint64 size = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isPair(text, i)) {
            size += pair;
            ++i;
            continue;
        }
        const std::optional<int> unit = sizeOfUnit(text[i].unicode());
        if (!unit)
            return std::nullopt;
        size += *unit;
    }
    return size;
}

QString ImpExp_Text::ofTime(const QDateTime &time)
{
    const QDateTime utc = time.toUTC();
    return utc.toString(utc.time().msec() == 0 ? Qt::ISODate : Qt::ISODateWithMs);
}
