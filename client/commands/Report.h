// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/text/Printable.h"
#include "client/text/RecordJson.h"

#include <QList>
#include <QString>
#include <QTextStream>

/// What every command writes in the same way. Values are escaped as Printable does.
namespace Report {

/// A line on standard error, "kestin-dir: text".
void problem(const QString &text);

/// An object on a line of its own.
void json(QTextStream &out, const QJsonObject &object);

/// A JSON array with one object a line, so that a script may read it whole or line by line.
template <typename Record>
void json(QTextStream &out, const QList<Record> &records)
{
    out << "[\n";
    for (qsizetype index = 0; index < records.size(); ++index) {
        if (index > 0)
            out << ",\n";
        out << QString::fromUtf8(Printable::json(RecordJson::of(records.at(index))));
    }
    out << "\n]\n";
}

/// Contacts as a table as wide as the terminal, or as JSON.
void contacts(QTextStream &out, const ListContact &contacts, bool asJson);

} // namespace Report
