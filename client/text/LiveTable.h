// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/text/Table.h"

/// A table that grows where a person sees it: each table shown takes the place of the table before. Nothing is written
/// when the standard output is a file or a pipe.
class LiveTable
{
public:
    explicit LiveTable(QTextStream &out);
    ~LiveTable();
    Q_DISABLE_COPY_MOVE(LiveTable)

    /// As much of the table as the terminal has room for, and under it a line that says what is going on.
    void show(const Table &table, const QString &status);
    /// Takes the table away, so that something else can be written in its place.
    void clear();

private:
    QTextStream &m_out;
    qsizetype m_lines = 0;
};
