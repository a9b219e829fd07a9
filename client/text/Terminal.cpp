// SPDX-License-Identifier: Apache-2.0
#include "client/text/Terminal.h"

#include <QJsonDocument>
#include <QList>
#include <QtGlobal>

#include <algorithm>

#include <sys/ioctl.h>
#include <unistd.h>
#include <wchar.h>

namespace {

int columnsOf(char32_t character)
{
    // A character that the locale does not know is shown by some replacement, one column wide.
    const int columns = wcwidth(wchar_t(character));
    return columns < 0 ? 1 : columns;
}

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

int Terminal::outputWidth()
{
    const int wanted = qEnvironmentVariableIntValue("COLUMNS"); // 0 when it is not set
    if (wanted > 0)
        return wanted;
    return outputSize().columns;
}

Terminal::Size Terminal::outputSize()
{
    winsize size{};
    if (!isatty(STDOUT_FILENO) || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0)
        return {};
    return {size.ws_col, size.ws_row};
}

bool Terminal::errorIsTerminal()
{
    return isatty(STDERR_FILENO);
}

bool Terminal::canAsk()
{
    return isatty(STDIN_FILENO) && errorIsTerminal();
}

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

QStringList DisplayWidth::wrapped(const QString &text, int width)
{
    QStringList lines;
    for (const QString &word : text.split(QLatin1Char(' '))) {
        const bool goesOn = !lines.isEmpty() && (width <= 0 || of(lines.last()) + 1 + of(word) <= width);
        if (goesOn)
            lines.last() += QLatin1Char(' ') + word;
        else
            lines.append(word);
    }
    return lines;
}

QString DisplayWidth::padded(const QString &text, int width)
{
    return text + QString(std::max(0, width - of(text)), QLatin1Char(' '));
}

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
