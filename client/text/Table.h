// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QStringList>
#include <QTextStream>

/// Rows under headings, columns aligned for the eye. Cells are escaped as Printable::text does.
class Table
{
public:
    explicit Table(const QStringList &headings);

    /// As many cells as there are headings.
    void addRow(const QStringList &cells);

    /// Writes the table so that no line is wider than `width` columns. 0 makes it as wide as it needs. The widest
    /// columns give way first. The first column (what a row is called by) never does.
    void write(QTextStream &out, int width) const;

    /// Whether nothing has to be cut for this width.
    bool fits(int width) const;

private:
    QList<int> columnWidths(int width) const;

    QList<QStringList> m_rows;
};
