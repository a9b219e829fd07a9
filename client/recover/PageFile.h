// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QFile>
#include <QSet>

#include <optional>

/// The pages of an SQLite file, in whatever state it is. Page numbers begin with 1.
class PageFile
{
public:
    /// Bytes of the file before the first page's own header.
    static constexpr qsizetype headerLength = 100;
    /// What a page with rows of a table begins with.
    static constexpr int leafTable = 13;

    /// The file is a copy, so that it stays as it is but for `mendHeader`. The size of its pages is what its header
    /// says, or, where more pages make sense with another size, that size; and so for the bytes that hold nothing.
    explicit PageFile(const QString &path);

    /// Whether it begins like a database, or has a page that could be of a table or an index.
    bool isDatabase() const { return m_hasMagic || m_treePages > 0; }

    qint64 size() const { return m_size; }
    int pageSize() const { return m_pageSize; }
    /// Bytes of a page that hold anything.
    int usableSize() const { return m_pageSize - m_reserved; }
    /// Whether the pages say something else than the header does.
    bool contradictsHeader() const;
    /// The last page may be cut.
    quint32 pageCount() const { return quint32((m_size + m_pageSize - 1) / m_pageSize); }
    /// The page, with zeros where the file has no such bytes.
    QByteArray page(quint32 number);

    /// To be called after somebody else has written to the file.
    void refresh();

    enum class Encoding { Utf8 = 1, Utf16LittleEndian, Utf16BigEndian };
    /// That of the header; each of them where the header is no good.
    QList<Encoding> encodings() const;

    /// The pages that hold nothing any more. None when the list of them is damaged.
    std::optional<QSet<quint32>> freePages();

    /// Makes the header such that SQLite takes the file, as far as the header is concerned. False when it cannot be
    /// written.
    [[nodiscard]] bool mendHeader();

private:
    void readHeader();
    void findPageSize();
    bool readTrunk(quint32 number, quint32 &next, QSet<quint32> &pages);

    QFile m_file;
    QByteArray m_header;
    qint64 m_size = 0;
    int m_pageSize = 0;
    int m_reserved = 0;
    int m_treePages = 0; ///< in the beginning of the file
    bool m_hasMagic = false;
};

/// Numbers as they stand in the file.
namespace BigEndian {

quint16 read16(QByteArrayView bytes, qsizetype place);
quint32 read32(QByteArrayView bytes, qsizetype place);

} // namespace BigEndian
