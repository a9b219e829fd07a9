// SPDX-License-Identifier: Apache-2.0
#include "client/recover/PageFile.h"

#include <QtEndian>

#include <algorithm>

namespace {

constexpr QByteArrayView magic("SQLite format 3\0", 16);
constexpr int smallestPage = 512;
constexpr int largestPage = 65536;
constexpr int usualPage = 4096;
constexpr int leastUsable = 480;

// Places in the header.
constexpr qsizetype pageSizeAt = 16;
constexpr qsizetype versionsAt = 18;
constexpr qsizetype reservedAt = 20;
constexpr qsizetype fractionsAt = 21;
constexpr qsizetype changesAt = 24;
constexpr qsizetype pageCountAt = 28;
constexpr qsizetype freeListAt = 32;
constexpr qsizetype freeCountAt = 36;
constexpr qsizetype schemaFormatAt = 44;
constexpr qsizetype largestRootAt = 52;
constexpr qsizetype encodingAt = 56;
constexpr qsizetype incrementalAt = 64;
constexpr qsizetype validForAt = 92;

void write16(QByteArray &bytes, qsizetype place, quint16 value)
{
    qToBigEndian(value, bytes.data() + place);
}

void write32(QByteArray &bytes, qsizetype place, quint32 value)
{
    qToBigEndian(value, bytes.data() + place);
}

int pageSizeOf(const QByteArray &header)
{
    const int stored = BigEndian::read16(header, pageSizeAt);
    return stored == 1 ? largestPage : stored;
}

bool isPageSize(int size)
{
    return size >= smallestPage && size <= largestPage && (size & (size - 1)) == 0;
}

/// Whether the page has the form of one of a table or an index, with something in it.
bool isTreePage(QByteArrayView page, qsizetype start)
{
    constexpr int innerIndex = 2;
    constexpr int innerTable = 5;
    constexpr int leafIndex = 10;
    const int type = uchar(page.at(start));
    const bool isInner = type == innerIndex || type == innerTable;
    if (!isInner && type != leafIndex && type != PageFile::leafTable)
        return false;
    const qsizetype pointers = start + (isInner ? 12 : 8);
    const int cells = BigEndian::read16(page, start + 3);
    const int contentStart = BigEndian::read16(page, start + 5);
    const int content = contentStart == 0 ? largestPage : contentStart;
    if (cells == 0 || pointers + 2 * qsizetype(cells) > content || content > page.size())
        return false;
    for (int cell = 0; cell < cells; ++cell) {
        const int place = BigEndian::read16(page, pointers + 2 * qsizetype(cell));
        if (place < content || place + 4 > page.size())
            return false;
    }
    return true;
}

int treePages(const QByteArray &sample, int pageSize, int reserved)
{
    int count = 0;
    for (qsizetype place = 0; place + pageSize <= sample.size(); place += pageSize)
        count += isTreePage(QByteArrayView(sample).sliced(place, pageSize - reserved),
                            place == 0 ? PageFile::headerLength : 0)
                     ? 1
                     : 0;
    return count;
}

} // namespace

quint16 BigEndian::read16(QByteArrayView bytes, qsizetype place)
{
    return qFromBigEndian<quint16>(bytes.data() + place);
}

quint32 BigEndian::read32(QByteArrayView bytes, qsizetype place)
{
    return qFromBigEndian<quint32>(bytes.data() + place);
}

PageFile::PageFile(const QString &path)
    : m_file(path)
{
    if (m_file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        m_size = m_file.size();
    readHeader();
    m_hasMagic = m_header.startsWith(magic);
    findPageSize();
}

void PageFile::readHeader()
{
    m_file.seek(0);
    m_header = m_file.read(headerLength).leftJustified(headerLength, '\0');
}

/// A header that was mended says no more than it did.
void PageFile::refresh()
{
    m_size = m_file.size();
    if (m_hasMagic)
        readHeader();
}

void PageFile::findPageSize()
{
    const int headerSize = pageSizeOf(m_header);
    constexpr qint64 sampleSize = 4 * 1024 * 1024;
    m_file.seek(0);
    const QByteArray sample = m_file.read(sampleSize);
    m_pageSize = isPageSize(headerSize) ? headerSize : usualPage;
    m_treePages = treePages(sample, m_pageSize, 0);
    for (int size = smallestPage; size <= largestPage; size *= 2) {
        const int found = treePages(sample, size, 0);
        if (found <= m_treePages)
            continue;
        m_treePages = found;
        m_pageSize = size;
    }
    const int reserved = uchar(m_header.at(reservedAt));
    const bool isPossible = m_hasMagic && m_pageSize - reserved >= leastUsable;
    m_reserved = isPossible && treePages(sample, m_pageSize, reserved) == m_treePages ? reserved : 0;
}

bool PageFile::contradictsHeader() const
{
    return m_pageSize != pageSizeOf(m_header) || m_reserved != uchar(m_header.at(reservedAt));
}

QByteArray PageFile::page(quint32 number)
{
    QByteArray bytes;
    if (number > 0 && m_file.seek(qint64(number - 1) * m_pageSize))
        bytes = m_file.read(m_pageSize);
    return bytes.leftJustified(m_pageSize, '\0');
}

QList<PageFile::Encoding> PageFile::encodings() const
{
    const quint32 stored = BigEndian::read32(m_header, encodingAt);
    if (m_hasMagic && stored >= quint32(Encoding::Utf8) && stored <= quint32(Encoding::Utf16BigEndian))
        return {Encoding(stored)};
    return {Encoding::Utf8, Encoding::Utf16LittleEndian, Encoding::Utf16BigEndian};
}

std::optional<QSet<quint32>> PageFile::freePages()
{
    QSet<quint32> pages;
    quint32 next = BigEndian::read32(m_header, freeListAt);
    while (m_hasMagic && next != 0) {
        if (!readTrunk(next, next, pages))
            return std::nullopt;
    }
    if (!m_hasMagic || quint32(pages.size()) != BigEndian::read32(m_header, freeCountAt))
        return std::nullopt;
    return pages;
}

/// A page of the list: the next of them, and the free pages that it names. False when it makes no sense.
bool PageFile::readTrunk(quint32 number, quint32 &next, QSet<quint32> &pages)
{
    constexpr int entrySize = 4;
    const auto add = [&](quint32 free) {
        const bool isNew = free > 1 && free <= pageCount() && !pages.contains(free);
        pages.insert(free);
        return isNew;
    };
    if (!add(number))
        return false;
    const QByteArray trunk = page(number);
    next = BigEndian::read32(trunk, 0);
    const quint32 count = BigEndian::read32(trunk, entrySize);
    if (count > quint32(usableSize() / entrySize - 2))
        return false;
    for (quint32 entry = 0; entry < count; ++entry) {
        if (!add(BigEndian::read32(trunk, entrySize * (qsizetype(entry) + 2))))
            return false;
    }
    return true;
}

bool PageFile::mendHeader()
{
    const quint32 encoding = quint32(encodings().first());
    QByteArray &header = m_header;
    header.replace(0, magic.size(), magic);
    write16(header, pageSizeAt, quint16(m_pageSize == largestPage ? 1 : m_pageSize));
    constexpr char writeAhead = 2;
    for (const qsizetype place : {versionsAt, versionsAt + 1}) {
        if (header.at(place) != 1)
            header[place] = writeAhead;
    }
    header[reservedAt] = char(m_reserved);
    header.replace(fractionsAt, 3, "\x40\x20\x20", 3); // never anything else
    write32(header, pageCountAt, pageCount());
    constexpr quint32 newestFormat = 4;
    if (const quint32 format = BigEndian::read32(header, schemaFormatAt); format == 0 || format > newestFormat)
        write32(header, schemaFormatAt, newestFormat);
    if (const quint32 root = BigEndian::read32(header, largestRootAt); root == 0 || root > pageCount()) {
        write32(header, largestRootAt, 0);
        write32(header, incrementalAt, 0);
    }
    write32(header, encodingAt, encoding);
    write32(header, validForAt, BigEndian::read32(header, changesAt));
    const qint64 wholePages = qint64(pageCount()) * m_pageSize;
    return m_file.resize(wholePages) && m_file.seek(0) && m_file.write(header) == header.size() && m_file.flush();
}
