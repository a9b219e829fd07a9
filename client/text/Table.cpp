// SPDX-License-Identifier: Apache-2.0
#include "client/text/Table.h"

#include "client/text/Terminal.h"

#include <algorithm>

namespace {

constexpr int gap = 2;

template <typename Places, typename Member>
int total(const Places &places, Member member)
{
    int sum = -gap;
    for (const auto &place : places)
        sum += place.*member + gap;
    return sum;
}

} // namespace

Table::Table(const QList<Column> &columns)
    : m_columns(columns)
{
    QStringList headings;
    for (const Column &column : columns)
        headings.append(column.heading);
    m_rows.append(headings);
}

void Table::addRow(const QStringList &cells)
{
    QStringList row;
    for (const QString &cell : cells)
        row.append(Printable::text(cell));
    m_rows.append(row);
}

/// Every column that is not empty, as wide as it needs.
QList<Table::Place> Table::places() const
{
    QList<Place> places;
    for (qsizetype index = 0; index < m_columns.size(); ++index) {
        const Column &column = m_columns.at(index);
        int widest = 0;
        for (qsizetype row = 1; row < m_rows.size(); ++row)
            widest = std::max(widest, DisplayWidth::of(m_rows.at(row).at(index)));
        if (widest == 0 && !column.isAsked && m_rows.size() > 1)
            continue;
        widest = std::max(widest, DisplayWidth::of(column.heading));
        places.append({index, widest, column.least == uncut ? widest : std::min(widest, column.least)});
    }
    return places;
}

QList<Table::Place> Table::places(int width) const
{
    QList<Place> places = this->places();
    const auto lessNeeded = [this](const Place &left, const Place &right) {
        return m_columns.at(left.column).rank < m_columns.at(right.column).rank;
    };
    while (width > 0 && total(places, &Place::least) > width) {
        const auto least = std::max_element(places.begin(), places.end(), lessNeeded);
        if (least == places.end() || m_columns.at(least->column).rank == 0)
            break;
        places.erase(least);
    }
    const auto lessSpare = [](const Place &left, const Place &right) {
        return left.width - left.least < right.width - right.least;
    };
    while (width > 0 && total(places, &Place::width) > width) {
        const auto widest = std::max_element(places.begin(), places.end(), lessSpare);
        if (widest == places.end() || widest->width == widest->least)
            break;
        --widest->width;
    }
    return places;
}

void Table::write(QTextStream &out, int width) const
{
    const QList<Place> columns = places(width);
    for (const QStringList &row : m_rows) {
        QString line;
        for (const Place &place : columns) {
            const QString cell = DisplayWidth::cut(row.at(place.column), std::max(1, place.width));
            line += DisplayWidth::padded(cell, place.width + gap);
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        out << line << '\n';
    }
}
