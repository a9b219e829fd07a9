// SPDX-License-Identifier: Apache-2.0
#include "client/recover/LeafRows.h"

#include <QStringDecoder>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>

namespace {

constexpr qsizetype leafHeaderLength = 8;
constexpr qsizetype mostColumns = 100;

/// Takes the number at the place and steps behind it. None at the end of the bytes.
std::optional<quint64> takeVarint(QByteArrayView bytes, qsizetype &place)
{
    constexpr int longest = 9;
    quint64 value = 0;
    for (int index = 1; place < bytes.size(); ++index) {
        const auto byte = uchar(bytes.at(place++));
        if (index == longest)
            return value << 8 | byte;
        value = value << 7 | (byte & 0x7fU);
        if (byte < 0x80)
            return value;
    }
    return std::nullopt;
}

// SQLite's serial types.
constexpr quint64 floatKind = 7;
constexpr quint64 zeroKind = 8;
constexpr quint64 oneKind = 9;
constexpr quint64 firstBytesKind = 12;

/// None when there is no such type.
std::optional<quint64> sizeOf(quint64 kind)
{
    constexpr std::array<quint64, 10> sizes{0, 1, 2, 3, 4, 6, 8, 8, 0, 0};
    if (kind < sizes.size())
        return sizes[kind];
    return kind < firstBytesKind ? std::nullopt : std::optional((kind - firstBytesKind) / 2);
}

/// The kinds of the values, from the header of the row. None when they do not make up the payload exactly.
std::optional<QList<quint64>> kindsOf(QByteArrayView payload, qsizetype &place)
{
    const std::optional<quint64> headerSize = takeVarint(payload, place);
    if (!headerSize || *headerSize > quint64(payload.size()))
        return std::nullopt;
    QList<quint64> kinds;
    quint64 end = *headerSize;
    while (quint64(place) < *headerSize) {
        const std::optional<quint64> kind = takeVarint(payload, place);
        const std::optional<quint64> size = kind ? sizeOf(*kind) : std::nullopt;
        if (!size || *size > quint64(payload.size()) || kinds.size() == mostColumns)
            return std::nullopt;
        end += *size;
        kinds.append(*kind);
    }
    const bool isExact = quint64(place) == *headerSize && end == quint64(payload.size());
    return isExact ? std::optional(kinds) : std::nullopt;
}

qint64 integerOf(QByteArrayView bytes)
{
    constexpr uchar sign = 0x80;
    quint64 value = !bytes.isEmpty() && (uchar(bytes.front()) & sign) != 0 ? ~quint64(0) : 0;
    for (const char byte : bytes)
        value = value << 8 | uchar(byte);
    return qint64(value);
}

QString textOf(QByteArrayView bytes, PageFile::Encoding encoding)
{
    if (encoding == PageFile::Encoding::Utf8)
        return QString::fromUtf8(bytes);
    const bool isLittle = encoding == PageFile::Encoding::Utf16LittleEndian;
    const QString text = QStringDecoder(isLittle ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE).decode(bytes);
    return QString::fromUtf8(text.toUtf8()); // without halves of characters, which no bus carries
}

QString textOf(const LeafRows::Row::Value &value, PageFile::Encoding encoding)
{
    if (value.kind >= firstBytesKind)
        return textOf(value.bytes, encoding);
    if (value.kind == 0)
        return {};
    if (value.kind == floatKind)
        return QString::number(std::bit_cast<double>(integerOf(value.bytes)));
    if (value.kind == zeroKind || value.kind == oneKind)
        return QString::number(value.kind - zeroKind);
    return QString::number(integerOf(value.bytes));
}

} // namespace

bool LeafRows::Row::isText() const
{
    return std::all_of(values.cbegin(), values.cend(), [](const Value &value) {
        return value.kind == 0 || (value.kind > firstBytesKind && value.kind % 2 == 1);
    });
}

StoredRow LeafRows::Row::decoded(PageFile::Encoding encoding) const
{
    StoredRow row{id, {}};
    for (const Value &value : values)
        row.append(textOf(value, encoding));
    return row;
}

LeafRows::LeafRows(PageFile &pages)
    : m_pages(pages)
    , m_budget(4 * pages.size())
{
}

QList<LeafRows::Row> LeafRows::of(quint32 number)
{
    const QByteArray page = m_pages.page(number);
    const qsizetype start = number == 1 ? PageFile::headerLength : 0;
    if (page.at(start) != PageFile::leafTable)
        return {};
    const qsizetype cells = BigEndian::read16(page, start + 3);
    const qsizetype pointers = start + leafHeaderLength;
    QList<Row> rows;
    for (qsizetype cell = 0; cell < cells && pointers + 2 * cell + 2 <= page.size(); ++cell) {
        if (const auto row = rowAt(page, BigEndian::read16(page, pointers + 2 * cell)))
            rows.append(*row);
    }
    return rows;
}

std::optional<LeafRows::Row> LeafRows::rowAt(const QByteArray &page, qsizetype place)
{
    const std::optional<quint64> size = takeVarint(page, place);
    const std::optional<quint64> id = takeVarint(page, place);
    if (!size || !id || *size > largestRow)
        return std::nullopt;
    const QByteArray payload = payloadAt(page, place, *size);
    qsizetype at = 0;
    const auto kinds = kindsOf(payload, at);
    if (!kinds)
        return std::nullopt;
    Row row{qint64(*id), {}};
    for (const quint64 kind : *kinds) {
        const auto length = qsizetype(*sizeOf(kind));
        row.values.append({kind, payload.mid(at, length)});
        at += length;
    }
    return row;
}

/// What the cell holds, on its page and on others. Empty when that cannot be.
QByteArray LeafRows::payloadAt(const QByteArray &page, qsizetype place, quint64 size)
{
    // As the file format says: https://www.sqlite.org/fileformat2.html#b_tree_pages
    const auto usable = quint64(m_pages.usableSize());
    const quint64 mostLocal = usable - 35;
    quint64 local = size;
    if (size > mostLocal) {
        const quint64 leastLocal = (usable - 12) * 32 / 255 - 23;
        const quint64 fitting = leastLocal + (size - leastLocal) % (usable - 4);
        local = fitting <= mostLocal ? fitting : leastLocal;
    }
    const bool isWhole = local == size;
    if (quint64(place) + local + (isWhole ? 0 : 4) > usable)
        return {};
    QByteArray payload = page.mid(place, qsizetype(local));
    if (!isWhole && !appendOverflow(payload, BigEndian::read32(page, place + qsizetype(local)), size))
        return {};
    return payload;
}

bool LeafRows::appendOverflow(QByteArray &payload, quint32 next, quint64 size)
{
    constexpr int linkSize = 4;
    const int perPage = m_pages.usableSize() - linkSize;
    QSet<quint32> met;
    while (quint64(payload.size()) < size) {
        if (next == 0 || next > m_pages.pageCount() || met.contains(next) || m_budget < perPage)
            return false;
        met.insert(next);
        m_budget -= perPage;
        const QByteArray page = m_pages.page(next);
        next = BigEndian::read32(page, 0);
        payload += page.mid(linkSize, std::min(qsizetype(perPage), qsizetype(size) - payload.size()));
    }
    return true;
}
