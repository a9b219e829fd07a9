// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/// One entry of a company directory, as it came from the server or the file.
struct DirectoryEntry
{
    QString dn;
    QHash<QString, QStringList> values; ///< by attribute name in lower case

    QStringList valuesOf(const QString &attribute) const { return values.value(attribute.toLower()); }
    /// Adds a value of "attribute" or "attribute;option".
    void add(const QString &description, const QString &value)
    {
        values[description.section(QLatin1Char(';'), 0, 0).toLower()].append(value);
    }
};

using DirectoryEntries = QList<DirectoryEntry>;
