// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/VCardLines.h"

#include <utility>

namespace {

bool endsWithBegin(QByteArrayView text)
{
    static constexpr QByteArrayView mark("BEGIN:VCARD");
    text = text.endsWith('\r') ? text.chopped(1) : text;
    return text.size() >= mark.size() && text.last(mark.size()).compare(mark, Qt::CaseInsensitive) == 0;
}

/// The mark tells UTF-16, or the zero in the first letter.
std::optional<QStringConverter::Encoding> utf16Of(QByteArrayView text)
{
    if (text.size() < 2)
        return std::nullopt;
    if (text.startsWith("\xff\xfe") || (text.at(0) != '\0' && text.at(1) == '\0'))
        return QStringConverter::Utf16LE;
    const bool isBig = text.startsWith("\xfe\xff") || (text.at(0) == '\0' && text.at(1) != '\0');
    return isBig ? std::optional(QStringConverter::Utf16BE) : std::nullopt;
}

} // namespace

QByteArray VCardLines::next()
{
    for (;;) {
        if (const qsizetype end = findEnd(); end >= 0)
            return take(end);
        m_buffer.remove(0, std::exchange(m_from, 0));
        if (m_buffer.size() >= longestPiece || !fill())
            return std::exchange(m_buffer, {});
    }
}

bool VCardLines::fill()
{
    const QByteArray bytes = m_device.readLine(longestPiece);
    if (!std::exchange(m_isBegun, true)) {
        if (const auto encoding = utf16Of(bytes))
            m_utf16.emplace(*encoding);
    }
    m_buffer += m_utf16 ? decoded(bytes) : bytes;
    return !bytes.isEmpty();
}

QByteArray VCardLines::decoded(const QByteArray &bytes)
{
    QString text = std::exchange(m_half, {}) + QString(m_utf16->decode(bytes));
    if (!text.isEmpty() && text.back().isHighSurrogate()) {
        m_half = text.back();
        text.chop(1);
    }
    return text.toUtf8();
}

/// The place of the character that ends the line; -1 when the buffer has no such character yet.
qsizetype VCardLines::findEnd()
{
    for (qsizetype place = m_from; place < m_buffer.size(); ++place) {
        const char character = m_buffer.at(place);
        if ((character == '\n' || character == '\r') && endsLine(place))
            return place;
    }
    return -1;
}

/// A line feed does, and a carriage return without one where the line in which a card begins ended so.
bool VCardLines::endsLine(qsizetype place)
{
    const bool isFeed = m_buffer.at(place) == '\n';
    if (!isFeed && place + 1 == m_buffer.size())
        fill();
    const bool isReturn = !isFeed && (place + 1 == m_buffer.size() || m_buffer.at(place + 1) != '\n');
    if ((isFeed || isReturn) && endsWithBegin(QByteArrayView(m_buffer).sliced(m_from, place - m_from)))
        m_returnsEndLines = isReturn;
    return isFeed || (isReturn && m_returnsEndLines);
}

QByteArray VCardLines::take(qsizetype end)
{
    const QByteArray line = m_buffer.mid(m_from, end - m_from) + '\n';
    m_from = end + 1;
    return line;
}
