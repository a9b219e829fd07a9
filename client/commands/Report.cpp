// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Report.h"

#include "client/text/ContactTable.h"
#include "client/text/Terminal.h"

#include <cstdio>

namespace {

// Problems are told from places that know of no command.
bool s_isJson = false;

void tell(QLatin1String what, const QString &text, QJsonObject object = {})
{
    object.insert(what, text);
    const QByteArray line = s_isJson ? Printable::json(object) : "kestin-dir: " + Printable::text(text).toUtf8();
    std::fprintf(stderr, "%s\n", line.constData());
}

} // namespace

void Report::useJson()
{
    s_isJson = true;
}

void Report::problem(const QString &text)
{
    tell(QLatin1String("problem"), text);
}

void Report::note(const QString &text)
{
    tell(QLatin1String("note"), text);
}

void Report::failure(const CommandFailure &failure)
{
    tell(QLatin1String("problem"), failure.text(), {{QLatin1String("exitCode"), int(failure.code())}});
}

void Report::Changes::refuse(const QString &id, const QString &reason)
{
    problem(reason);
    m_refused.append(QJsonObject{{QLatin1String("contactId"), id}, {QLatin1String("reason"), reason}});
}

ExitCode Report::Changes::finish(const CommandContext &context, QLatin1String verb) const
{
    if (context.json)
        json(context.out, {{verb, QJsonArray::fromStringList(m_done)}, {QLatin1String("refused"), m_refused}});
    return m_refused.isEmpty() ? ExitCode::Done : ExitCode::Refused;
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
