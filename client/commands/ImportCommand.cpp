// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/DirectoryService.h"
#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/import/ImportRun.h"
#include "platform/records/RegularFile.h"

#include <cstdio>

CommandHelp ImportCommand::help() const
{
    return {{QStringLiteral("import FILE [FILE...]")},
            QStringLiteral(
                R"(Reads vCards of version 2.1, 3.0 and 4.0, "-" being the standard input, and creates a contact for
each. A card that cannot be used, or that the directory refuses, is told with its place in the file,
its name and the reason, and the import goes on; when the directory is full or read-only it stops.
At the end a line says how many were created and refused. It ends with 1 when any was refused.

Numbers: work -> office (a second one, or a short one, -> extension), cell -> mobile, home -> home,
fax -> fax. What has no field of its own becomes an attribute (company, job, address, city, zip,
country, note, url, birthday...). An embedded photo is put into the directory's photo folder;
where that cannot be done, that is told and the contact has none. Cards that kestin-dir export
wrote come back as they were.)"),
            {QStringLiteral("kestin-dir import people.vcf"), QStringLiteral("cat *.vcf | kestin-dir import -")}};
}

ExitCode ImportCommand::importFile(const QString &path, ImportRun &run)
{
    const bool isStandardInput = path == QLatin1String("-");
    QFile file(path);
    std::optional<QString> reason;
    if (!isStandardInput)
        reason = RegularFile::open(file);
    else if (!file.open(stdin, QIODevice::ReadOnly))
        reason = file.errorString();
    if (reason) {
        Report::problem(QStringLiteral("%1 cannot be read: %2").arg(path, *reason));
        return ExitCode::FileError;
    }
    const bool hasCards = run.read(file, path, isStandardInput ? 0 : file.size());
    if (hasCards && file.error() == QFileDevice::NoError)
        return ExitCode::Done;
    Report::problem(file.error() == QFileDevice::NoError
                        ? QStringLiteral("%1 holds no vCard").arg(path)
                        : QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString()));
    return ExitCode::FileError;
}

ExitCode ImportCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QStringList paths = CommandArguments::some(arguments.positionalArguments(), QStringLiteral("FILE"));
    const DirectoryService directory(context.bus);
    PhotoFolder photos{SettingsService(context.bus)};
    const Interruption interruption;
    ImportRun run(directory, photos);
    QObject::connect(&interruption, &Interruption::interrupted, &run, &ImportRun::interrupt);
    const auto tell = [](const RefusedCard &card) { Report::problem(card.toString()); };
    QObject::connect(&run, &ImportRun::cardRefused, &run, tell);
    QObject::connect(&run, &ImportRun::photoLeftOut, &run, tell);
    ExitCode result = ExitCode::Done;
    for (const QString &path : paths) {
        if (!run.stopped())
            result = std::max(result, importFile(path, run));
    }
    if (context.json)
        Report::json(context.out, run.report().toJson());
    else
        context.out << run.report().toString() << '\n';
    if (run.stopped()) {
        Report::problem(QStringLiteral("stopped before the end: %1").arg(run.stopped()->text()));
        return run.stopped()->code();
    }
    return result == ExitCode::Done && !run.report().refused.isEmpty() ? ExitCode::Refused : result;
}
