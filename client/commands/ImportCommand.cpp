// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Interruption.h"
#include "client/commands/Report.h"
#include "client/import/ImportRun.h"
#include "platform/records/RegularFile.h"

#include <cstdio>

#include <sys/stat.h>

namespace {

Duplicates duplicatesOf(const QCommandLineParser &arguments)
{
    const QString option = QStringLiteral("duplicates");
    const QString word = arguments.isSet(option) ? arguments.value(option) : QStringLiteral("skip");
    if (word == QLatin1String("skip"))
        return Duplicates::Skip;
    if (word == QLatin1String("update"))
        return Duplicates::Update;
    if (word != QLatin1String("add"))
        throw CommandFailure(ExitCode::Usage,
                             QStringLiteral("--duplicates takes skip, update or add, not \"%1\"").arg(word));
    return Duplicates::Add;
}

/// A pipe that the user names is read as the standard input is: a shell's <(command) is one.
std::optional<QString> open(QFile &file)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(file.fileName()).constData(), &status) != 0 || !S_ISFIFO(status.st_mode))
        return RegularFile::open(file);
    return file.open(QIODevice::ReadOnly) ? std::nullopt : std::optional(file.errorString());
}

} // namespace

QList<QCommandLineOption> ImportCommand::options() const
{
    return {{QStringLiteral("duplicates"),
             QStringLiteral("Cards whose contact is there: skip (the default), update or add"), QStringLiteral("WHAT")},
            {QStringLiteral("dry-run"),
             QStringLiteral("Change nothing, tell what would be changed, but for what only the directory can refuse")}};
}

CommandHelp ImportCommand::help() const
{
    return {{QStringLiteral("import FILE [FILE...] [--duplicates skip|update|add] [--dry-run]")},
            QStringLiteral(
                R"(Reads vCards of version 2.1, 3.0 and 4.0, "-" being the standard input, and creates a contact for
each. A card that cannot be used, or that the directory refuses, is told with its place in the file,
its name and the reason, and the import goes on; when the directory is full or read-only it stops.
At the end a line says how many were created and refused, and how many had been read and were not
tried when it stopped. It ends with 1 when any was refused.

Nobody is created twice: a card finds the contact that is there by its UID, or by its name together
with a number or an address, and is skipped then. With --duplicates update the contact takes over what
the card says and keeps the rest; with add it gets a second contact. A card that is about the same as
an earlier card of this import is skipped unless said otherwise.

Numbers: work -> office (a second one, or a short one, -> extension), cell -> mobile, home -> home,
fax -> fax, the preferred one first. Further numbers get a field that is free; one for which there is
none becomes an attribute, by which no caller is recognised, and that is told. What has no field of
its own becomes an attribute too (company, job, address, city, zip, country, note, url, birthday...).
An embedded photo is put into the directory's photo folder; where that cannot be done, that is told
and the contact has none. Properties that a contact has no place for are counted by their names at the
end. Companies, and people with a given name alone, have a last name only, by which they are found.
Cards that kestin-dir export wrote come back as they were.)"),
            {QStringLiteral("kestin-dir import people.vcf"), QStringLiteral("cat *.vcf | kestin-dir import -"),
             QStringLiteral("kestin-dir import people.vcf --duplicates update --dry-run")}};
}

ExitCode ImportCommand::importFile(const QString &path, ImportRun &run)
{
    const bool isStandardInput = path == QLatin1String("-");
    QFile file(path);
    std::optional<QString> reason;
    if (!isStandardInput)
        reason = open(file);
    else if (!file.open(stdin, QIODevice::ReadOnly))
        reason = file.errorString();
    if (reason) {
        Report::problem(QStringLiteral("%1 cannot be read: %2").arg(path, *reason));
        return ExitCode::FileError;
    }
    CardSource source(file, path, isStandardInput ? 0 : file.size());
    const bool hasCards = run.read(source);
    if (hasCards && file.error() == QFileDevice::NoError)
        return ExitCode::Done;
    Report::problem(file.error() == QFileDevice::NoError
                        ? QStringLiteral("%1 holds no vCard (jCard, xCard and CSV are not read)").arg(path)
                        : QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString()));
    return ExitCode::FileError;
}

ExitCode ImportCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QStringList paths = CommandArguments::some(arguments.positionalArguments(), QStringLiteral("FILE"));
    PhotoFolder photos{SettingsService(context.bus)};
    const Interruption interruption;
    ImportRun run(context.bus, photos, duplicatesOf(arguments), arguments.isSet(QStringLiteral("dry-run")));
    QObject::connect(&interruption, &Interruption::interrupted, &run, &ImportRun::interrupt);
    const auto tell = [](const RefusedCard &card) { Report::problem(card.toString()); };
    QObject::connect(&run, &ImportRun::cardRefused, &run, tell);
    QObject::connect(&run, &ImportRun::cardReduced, &run, tell);
    ExitCode result = ExitCode::Done;
    for (const QString &path : paths) {
        if (!run.stopped())
            result = std::max(result, importFile(path, run));
    }
    if (context.json)
        Report::json(context.out, run.report().toJson());
    else
        context.out << Printable::text(run.report().toString()) << '\n';
    if (const QString leftOut = run.report().leftOutText(); !context.json && !leftOut.isEmpty())
        context.out << Printable::text(leftOut) << '\n';
    if (run.stopped()) {
        const ExitCode code = run.stopped()->code();
        Report::failure({code, QStringLiteral("stopped before the end: %1").arg(run.stopped()->text())});
        return code;
    }
    return result == ExitCode::Done && !run.report().refused.isEmpty() ? ExitCode::Refused : result;
}
