// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace Terminal {

/// Columns of the terminal that the standard output goes to. 0 when it goes to a file or a pipe. The environment
/// variable COLUMNS, where it is exported, decides instead.
int outputWidth();

struct Size
{
    int columns = 0;
    int rows = 0;
};

/// The size of the terminal that the standard output goes to. All 0 when it goes to a file or a pipe.
Size outputSize();

/// Whether a person sees the standard error as it is written.
bool errorIsTerminal();

/// Whether a person can be asked: sees the standard error and types the standard input.
bool canAsk();

} // namespace Terminal

/// How many columns of a terminal a text takes. A wide character (Chinese, emoji) takes two, a combining mark none.
/// Needs a UTF-8 locale, which QCoreApplication sets.
namespace DisplayWidth {

int of(const QString &text);

/// The text if it fits the width. Otherwise as much of the text as fits, with an ellipsis behind. `width` is at least
/// 1.
QString cut(const QString &text, int width);

/// The text broken at blanks into lines of the width, as far as its words allow. A width of 0 does not break it.
QStringList wrapped(const QString &text, int width);

/// The text with blanks behind it up to the width.
QString padded(const QString &text, int width);

} // namespace DisplayWidth

/// Values as they may be written to a terminal. Somebody else chose what a contact's name holds. So characters that
/// drive a terminal or turn the direction of the text around are shown escaped, never sent as they are.
namespace Printable {

/// The text on a single line: control characters as \n, \t or \x1b, direction marks and line separators as \u202e.
QString text(const QString &value);

/// The object as JSON on a single line. Characters that `text` escapes are escaped in JSON's own way, so a reader gets
/// the value unchanged.
QByteArray json(const QJsonObject &object);

} // namespace Printable
