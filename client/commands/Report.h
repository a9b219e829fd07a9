// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"
#include "client/text/ContactText.h"
#include "client/text/Terminal.h"

#include <QJsonArray>
#include <QList>
#include <QString>
#include <QTextStream>

/// What every command writes in the same way. Values are escaped as Printable does.
namespace Report {

/// What standard error is told is told in JSON from now on, an object a line.
void useJson();

/// A line on standard error, "kestin-dir: text", or {"problem": "text"}.
void problem(const QString &text);

/// The same for what is no problem; in JSON {"note": "text"}.
void note(const QString &text);

/// What ended the program; in JSON with the key "exitCode" beside.
void failure(const CommandFailure &failure);

/// How a change of several contacts went, each by itself. A refusal is told as it comes.
class Changes
{
public:
    void add(const QString &id) { m_done.append(id); }
    void refuse(const QString &id, const QString &reason);

    /// Prints {"<verb>": ids, "refused": [{"contactId", "reason"}]} where JSON is asked for.
    ExitCode finish(const CommandContext &context, QLatin1String verb) const;

private:
    QStringList m_done;
    QJsonArray m_refused;
};

/// An object on a line of its own.
void json(QTextStream &out, const QJsonObject &object);

/// A JSON array with an object on each line, so that a script may read it whole or line by line.
void json(QTextStream &out, const QList<QJsonObject> &objects);

template <typename Record>
void json(QTextStream &out, const QList<Record> &records)
{
    QList<QJsonObject> objects;
    for (const Record &record : records)
        objects.append(RecordJson::of(record));
    json(out, objects);
}

/// Found contacts as JSON.
template <typename Record>
void foundJson(QTextStream &out, const QList<Record> &contacts)
{
    QList<QJsonObject> objects;
    for (const Record &contact : contacts)
        objects.append(RecordJson::ofFound(contact));
    json(out, objects);
}

/// Contacts as a table as wide as the terminal, with these columns or the usual ones, or as JSON.
void contacts(QTextStream &out, const ListContact &contacts, bool asJson, const QStringList &columns = {});

} // namespace Report
