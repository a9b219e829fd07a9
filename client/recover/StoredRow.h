// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

/// A row of a table, its values as texts in the order of the columns.
struct StoredRow
{
    qint64 id = 0; ///< its rowid
    QStringList values;

    /// A text ends at a NUL, as it would on the bus.
    void append(const QString &value)
    {
        const qsizetype end = value.indexOf(QChar::Null);
        values.append(end < 0 ? value : value.left(end));
    }
};
