// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Report.h"

#include "client/text/ContactTable.h"
#include "client/text/Terminal.h"

#include <cstdio>

void Report::problem(const QString &text)
{
    std::fprintf(stderr, "kestin-dir: %s\n", Printable::text(text).toUtf8().constData());
}

void Report::json(QTextStream &out, const QJsonObject &object)
{
    out << QString::fromUtf8(Printable::json(object)) << '\n';
}

void Report::json(QTextStream &out, const QList<QJsonObject> &objects)
{
    out << "[\n";
    for (qsizetype index = 0; index < objects.size(); ++index) {
        if (index > 0)
            out << ",\n";
        out << QString::fromUtf8(Printable::json(objects.at(index)));
    }
    out << "\n]\n";
}

void Report::contacts(QTextStream &out, const ListContact &contacts, bool asJson, const QStringList &columns)
{
    if (asJson)
        return json(out, contacts);
    ContactTable::of(contacts, columns).write(out, Terminal::outputWidth());
}
