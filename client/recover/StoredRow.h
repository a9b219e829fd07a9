// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

/// A row of a table, its values as texts in the order of the columns.
struct StoredRow
{
    qint64 id = 0; ///< its rowid
    QStringList values;
};
