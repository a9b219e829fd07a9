// SPDX-License-Identifier: Apache-2.0
#include "client/text/DisplayWidth.h"

#include <QList>

#include <algorithm>

#include <wchar.h>

namespace {

int columnsOf(char32_t character)
{
    // A character that the locale does not know is shown by some replacement, one column wide.
    const int columns = wcwidth(wchar_t(character));
    return columns < 0 ? 1 : columns;
}

} // namespace

int DisplayWidth::of(const QString &text)
{
    int width = 0;
    for (const char32_t character : text.toUcs4())
        width += columnsOf(character);
    return width;
}

QString DisplayWidth::cut(const QString &text, int width)
{
    if (of(text) <= width)
        return text;
    QString result;
    int left = width - 1;
    for (const char32_t character : text.toUcs4()) {
        left -= columnsOf(character);
        if (left < 0)
            break;
        result += QChar::fromUcs4(character);
    }
    return result + QChar(0x2026);
}

QString DisplayWidth::padded(const QString &text, int width)
{
    return text + QString(std::max(0, width - of(text)), QLatin1Char(' '));
}
