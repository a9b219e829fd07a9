// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

/// One property of a vCard, decoded.
struct VCardProperty
{
    QString name;        ///< in upper case, without its group
    QSet<QString> types; ///< in lower case: "work", "cell"
    QStringList values;  ///< the parts that semicolons separate; of CATEGORIES those that commas separate
    QByteArray bytes;    ///< the value when it is none of text but of base64, decoded

    bool is(const char *type) const { return types.contains(QLatin1String(type)); }
    /// The part at the place, on one line without blanks around it; empty when there is none.
    QString part(qsizetype index) const { return values.value(index).simplified(); }
    /// The whole value. A semicolon that should have been escaped and was not comes back as one.
    QString text() const { return values.join(QLatin1Char(';')).trimmed(); }
};

using VCardProperties = QList<VCardProperty>;
