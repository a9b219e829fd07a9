// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QStringList>
#include <QTextStream>

/// Rows under headings, columns aligned for the eye. Cells are escaped as Printable::text does.
class Table
{
public:
    struct Column
    {
        QString heading;
        int least = uncut;    ///< how narrow its cells may be cut, for a table that would be too wide
        int rank = 0;         ///< where that is not enough columns are left out, the highest first; 0 never is
        bool isAsked = false; ///< stands there though it is empty
    };
    static constexpr int uncut = 0;

    explicit Table(const QList<Column> &columns);

    /// As many cells as there are columns.
    void addRow(const QStringList &cells);

    /// Writes the table so that no line is wider than `width`, as far as the columns allow. A width of 0 makes it as
    /// wide as it needs. Columns in which every cell is empty are left out.
    void write(QTextStream &out, int width) const;

private:
    struct Place
    {
        qsizetype column;
        int width;
        int least;
    };
    QList<Place> places() const;
    QList<Place> places(int width) const;

    QList<Column> m_columns;
    QList<QStringList> m_rows; ///< the headings first
};
