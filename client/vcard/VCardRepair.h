// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// Mends what programs write and the library misreads. A line that it misreads costs not only that line: the value of
/// the next property takes its place.
namespace VCardRepair {

/// The card with each property on a line of its own: folded lines, quoted-printable lines that go on, and base64 lines
/// that are not indented are joined. A parameter that is no token is cut away, but for the words in it that say what a
/// number is ("WORK/MOBILE"). A line that is no property is left out. `card` is UTF-8.
QByteArray mended(const QByteArray &card);

} // namespace VCardRepair
