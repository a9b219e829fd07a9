// SPDX-License-Identifier: Apache-2.0
#include "client/text/Table.h"

#include "client/text/Terminal.h"

#include <algorithm>
#include <numeric>

namespace {
constexpr int gap = 2;
constexpr int narrowest = 4;
} // namespace

Table::Table(const QStringList &headings)
    : m_rows{headings}
{
}

void Table::addRow(const QStringList &cells)
{
    QStringList row;
    for (const QString &cell : cells)
        row.append(Printable::text(cell));
    m_rows.append(row);
}

QList<int> Table::columnWidths(int width) const
{
    QList<int> widths(m_rows.first().size(), 0);
    for (const QStringList &row : m_rows) {
        for (qsizetype column = 0; column < widths.size(); ++column)
            widths[column] = std::max(widths[column], DisplayWidth::of(row.at(column)));
    }
    int excess = std::accumulate(widths.cbegin(), widths.cend(), gap * int(widths.size() - 1)) - width;
    while (width > 0 && excess > 0 && widths.size() > 1) {
        const auto widest = std::max_element(widths.begin() + 1, widths.end());
        if (*widest <= narrowest)
            break;
        --*widest;
        --excess;
    }
    return widths;
}

bool Table::fits(int width) const
{
    constexpr int unlimited = 0;
    return columnWidths(width) == columnWidths(unlimited);
}

void Table::write(QTextStream &out, int width) const
{
    const QList<int> widths = columnWidths(width);
    for (const QStringList &row : m_rows) {
        QString line;
        for (qsizetype column = 0; column < widths.size(); ++column) {
            const QString cell = DisplayWidth::cut(row.at(column), std::max(1, widths.at(column)));
            line += DisplayWidth::padded(cell, widths.at(column) + gap);
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        out << line << '\n';
    }
}
