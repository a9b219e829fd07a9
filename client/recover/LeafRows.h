// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/recover/PageFile.h"
#include "client/recover/StoredRow.h"

/// Reads rows out of the pages of tables, without the trees that lead there. What makes no sense is left out. However
/// the bytes are made up, it ends, and all rows together take no more memory than a few times the file.
class LeafRows
{
public:
    /// `pages` outlives this object.
    explicit LeafRows(PageFile &pages);

    struct Row
    {
        struct Value
        {
            quint64 kind; ///< SQLite's serial type
            QByteArray bytes;
        };
        qint64 id = 0;
        QList<Value> values;

        bool isText() const; ///< has only texts, or nothing, for values
        StoredRow decoded(PageFile::Encoding encoding) const;
    };

    /// The rows of a page. None when it is no last page of a table.
    QList<Row> of(quint32 page);

    static constexpr quint64 largestRow = 32 * 1024 * 1024;

private:
    std::optional<Row> rowAt(const QByteArray &page, qsizetype place);
    QByteArray payloadAt(const QByteArray &page, qsizetype place, quint64 size);
    bool appendOverflow(QByteArray &payload, quint32 next, quint64 size);

    PageFile &m_pages;
    qint64 m_budget; ///< bytes that may still be gathered from chains of pages
};
