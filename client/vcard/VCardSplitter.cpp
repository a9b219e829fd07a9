// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/VCardSplitter.h"

#include <utility>

namespace {

constexpr char beginMark[] = "BEGIN:VCARD";
constexpr char endMark[] = "END:VCARD";
constexpr char versionMark[] = "VERSION:";
constexpr char agentMark[] = "AGENT";
constexpr char byteOrderMark[] = "\xef\xbb\xbf";

bool is(const QByteArray &text, const char *other)
{
    return text.compare(other, Qt::CaseInsensitive) == 0;
}

bool startsWith(const QByteArray &line, const char *mark)
{
    return is(line.left(qsizetype(qstrlen(mark))), mark);
}

bool endsWithBegin(const QByteArray &line)
{
    return is(line.trimmed().right(qsizetype(qstrlen(beginMark))), beginMark);
}

/// What is left of a line that ends a card, when the next file begins in the same line.
QByteArray behindEnd(const QByteArray &line)
{
    QByteArray rest = line.trimmed().mid(qsizetype(qstrlen(endMark))).trimmed();
    if (rest.startsWith(byteOrderMark))
        rest.remove(0, qsizetype(qstrlen(byteOrderMark)));
    return rest;
}

} // namespace

/// What a line is to whoever looks for the ends of cards.
enum class VCardSplitter::Kind {
    Text,
    Begin,
    End,
    EndAndBegin,   ///< of files that were joined, the first without a final line end
    Agent,         ///< a card of version 2.1 may hold a card of its own, which begins in the next line
    AgentAndBegin, ///< or in this line
    HiddenBegin,   ///< a version behind a text that ends as a card begins: the first of joined files was cut off
};

VCardSplitter::Kind VCardSplitter::kindOf(const QByteArray &line)
{
    const bool isBehindHiddenBegin = std::exchange(m_mayHideBegin, false) && startsWith(line, versionMark);
    if (isBehindHiddenBegin)
        return Kind::HiddenBegin;
    if (is(line.trimmed(), beginMark))
        return Kind::Begin;
    if (startsWith(line, endMark)) {
        const QByteArray rest = behindEnd(line);
        return rest.isEmpty() ? Kind::End : is(rest, beginMark) ? Kind::EndAndBegin : Kind::Text;
    }
    const bool begins = endsWithBegin(line);
    if (startsWith(line, agentMark))
        return begins ? Kind::AgentAndBegin : line.trimmed().endsWith(':') ? Kind::Agent : Kind::Text;
    m_mayHideBegin = begins;
    return Kind::Text;
}

VCardSplitter::VCardSplitter(QIODevice &device)
    : m_lines(device)
{
}

QByteArray VCardSplitter::readLine()
{
    QByteArray line = m_again.isEmpty() ? m_lines.next() : std::exchange(m_again, {});
    if (line.startsWith(byteOrderMark)) // of a file behind another, too
        line.remove(0, qsizetype(qstrlen(byteOrderMark)));
    return line;
}

bool VCardSplitter::findBegin()
{
    while (!m_beginSeen) {
        const QByteArray line = readLine();
        if (line.isEmpty())
            return false;
        m_beginSeen = is(line.trimmed(), beginMark);
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
    m_mayHideBegin = m_innerMayBegin = false;
    m_depth = 1;
    bool atLineStart = true;
    while (m_depth > 0) {
        const QByteArray line = readLine();
        const Kind kind = atLineStart ? kindOf(line) : Kind::Text;
        if (line.isEmpty() || isNextCard(kind, line)) {
            card.text.clear();
            card.fault = QStringLiteral("has no END:VCARD");
            break;
        }
        const bool isOuter = m_depth == 1 && kind != Kind::Begin && kind != Kind::AgentAndBegin;
        follow(kind);
        if (isOuter)
            append(card, kind == Kind::EndAndBegin ? QByteArrayLiteral("END:VCARD\r\n") : line);
        atLineStart = line.endsWith('\n');
    }
    return card;
}

/// Whether another card begins here, which the open card may not hold. It is the next one then.
bool VCardSplitter::isNextCard(Kind kind, const QByteArray &line)
{
    const bool isNext = (kind == Kind::Begin && !m_innerMayBegin) || (kind == Kind::EndAndBegin && m_depth > 1) ||
                        kind == Kind::HiddenBegin;
    if (kind == Kind::HiddenBegin)
        m_again = line;
    m_beginSeen = isNext;
    return isNext;
}

void VCardSplitter::follow(Kind kind)
{
    if (kind == Kind::Begin || kind == Kind::AgentAndBegin)
        ++m_depth;
    if (kind == Kind::End || kind == Kind::EndAndBegin)
        --m_depth;
    m_innerMayBegin = kind == Kind::Agent;
    m_beginSeen = kind == Kind::EndAndBegin;
}
