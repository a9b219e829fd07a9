// SPDX-License-Identifier: Apache-2.0
#include "client/text/LiveTable.h"

#include "client/text/Terminal.h"

LiveTable::LiveTable(QTextStream &out)
    : m_out(out)
{
}

LiveTable::~LiveTable()
{
    clear();
}

void LiveTable::show(const Table &table, const QString &status)
{
    const auto [columns, rows] = Terminal::outputSize();
    // The heading, a row and the status, and the line under them where the cursor stands.
    constexpr int fewestRows = 4;
    if (columns == 0 || rows < fewestRows)
        return;
    QString text;
    QTextStream stream(&text);
    table.write(stream, columns);
    // What has been scrolled out of the terminal, or wrapped, cannot be taken away again.
    QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(0, rows - 2);
    lines.append(status);
    clear();
    for (const QString &line : std::as_const(lines))
        m_out << DisplayWidth::cut(line, columns) << '\n';
    m_out.flush();
    m_lines = lines.size();
}

void LiveTable::clear()
{
    if (m_lines > 0)
        m_out << "\r\x1b[" << m_lines << "A\x1b[J"; // a terminal shows the Ctrl-C where the cursor stands
    m_lines = 0;
    m_out.flush();
}
