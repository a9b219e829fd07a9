// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/VCardSplitter.h"

namespace {

constexpr qsizetype longestPiece = 64 * 1024;

bool isKeyword(const QByteArray &line, const char *keyword)
{
    return line.trimmed().compare(keyword, Qt::CaseInsensitive) == 0;
}

bool isBegin(const QByteArray &line)
{
    return isKeyword(line, "BEGIN:VCARD");
}

bool isEnd(const QByteArray &line)
{
    return isKeyword(line, "END:VCARD");
}

/// Cards of version 2.1 may hold a card of their own in this property.
bool opensInnerCard(const QByteArray &line)
{
    return line.left(5).compare("AGENT", Qt::CaseInsensitive) == 0 && line.trimmed().endsWith(':');
}

} // namespace

VCardSplitter::VCardSplitter(QIODevice &device)
    : m_device(device)
{
}

/// A piece of the file up to the end of the line, or of an overlong line. Empty at the end of the file.
QByteArray VCardSplitter::readLine()
{
    return m_device.readLine(longestPiece);
}

bool VCardSplitter::findBegin()
{
    static const QByteArray byteOrderMark("\xef\xbb\xbf");
    while (!m_beginSeen) {
        QByteArray line = readLine();
        if (line.isEmpty())
            return false;
        if (line.startsWith(byteOrderMark))
            line.remove(0, byteOrderMark.size());
        m_beginSeen = isBegin(line);
    }
    m_beginSeen = false;
    return true;
}

void VCardSplitter::append(RawCard &card, const QByteArray &line) const
{
    if (card.text.size() + line.size() > largestCard)
        card.fault = QStringLiteral("is larger than %1 MiB").arg(largestCard / 1024 / 1024);
    if (card.fault)
        card.text.clear();
    else
        card.text += line;
}

std::optional<RawCard> VCardSplitter::next()
{
    if (!findBegin())
        return std::nullopt;
    RawCard card{++m_count, QByteArrayLiteral("BEGIN:VCARD\r\n"), {}};
    bool atLineStart = true;
    bool innerCardMayBegin = false;
    int depth = 1;
    while (depth > 0) {
        const QByteArray line = readLine();
        const bool begins = atLineStart && isBegin(line);
        m_beginSeen = begins && !innerCardMayBegin;
        if (line.isEmpty() || m_beginSeen) {
            card.text.clear();
            card.fault = QStringLiteral("has no END:VCARD");
            break;
        }
        depth += begins ? 1 : 0;
        const bool outer = depth == 1;
        depth -= atLineStart && isEnd(line) ? 1 : 0;
        if (outer)
            append(card, line);
        innerCardMayBegin = atLineStart && opensInnerCard(line);
        atLineStart = line.endsWith('\n');
    }
    return card;
}
