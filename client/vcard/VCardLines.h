// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIODevice>
#include <QStringDecoder>

#include <optional>

/// The lines of a file of vCards as every program's files give them: UTF-16, with its mark or without, becomes
/// UTF-8.
/// Lines that end with a carriage return alone are lines where a card begins with such a line.
class VCardLines
{
public:
    /// The device is open and outlives this object.
    explicit VCardLines(QIODevice &device)
        : m_device(device)
    {
    }

    /// A line with "\n" at its end, or a piece of an overlong line. Empty at the end of the file.
    QByteArray next();

    static constexpr qsizetype longestPiece = 64 * 1024;

private:
    bool fill();
    QByteArray decoded(const QByteArray &bytes);
    qsizetype findEnd();
    QByteArray take(qsizetype end);
    bool endsLine(qsizetype place);

    QIODevice &m_device;
    std::optional<QStringDecoder> m_utf16;
    QString m_half; ///< of a surrogate pair
    QByteArray m_buffer;
    qsizetype m_from = 0; ///< what lies before in the buffer was taken
    bool m_isBegun = false;
    bool m_returnsEndLines = false;
};
