// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectoryEntry.h"

/// Where a value stands in an entry: in an attribute, or in those values of it that carry a label behind a blank, as
/// the attribute labeledURI has them ("https://example.org/zoe.jpg photo"). Written "labeledURI#photo".
struct LdapAttribute
{
    QString name;
    QString label;

    static LdapAttribute parsed(const QString &text)
    {
        return {text.section(QLatin1Char('#'), 0, 0).trimmed(), text.section(QLatin1Char('#'), 1).trimmed()};
    }

    /// The values without their label.
    QStringList valuesIn(const DirectoryEntry &entry) const
    {
        QStringList result;
        const QStringList all = entry.valuesOf(name);
        for (const QString &value : all) {
            if (label.isEmpty())
                result.append(value);
            else if (value.section(QLatin1Char(' '), 1).trimmed().compare(label, Qt::CaseInsensitive) == 0)
                result.append(value.section(QLatin1Char(' '), 0, 0));
        }
        return result;
    }

    bool operator==(const LdapAttribute &) const = default;
};
