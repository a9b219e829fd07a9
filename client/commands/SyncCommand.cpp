// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Confirmation.h"
#include "client/commands/Interruption.h"
#include "client/commands/Report.h"
#include "client/sync/SyncFile.h"
#include "client/sync/SyncRun.h"

#include <QFileInfo>
#include <QSysInfo>

namespace {

/// Null, which says that nothing counts as exported already, when none is given.
QDateTime dateOf(const QCommandLineParser &arguments)
{
    if (!arguments.isSet(QStringLiteral("since")))
        return {};
    const QString text = arguments.value(QStringLiteral("since"));
    const QDateTime date = QDateTime::fromString(text, Qt::ISODate);
    if (!date.isValid())
        throw CommandFailure(
            ExitCode::Usage,
            QStringLiteral("--since takes a date like 2026-11-21 or 2026-11-21T08:00:00Z, not \"%1\"").arg(text));
    return date.toUTC();
}

ExportRequest requestOf(const QString &path, const QString &device, const QCommandLineParser &arguments)
{
    constexpr int onePage = 0;
    return {path,
            CommandArguments::number(arguments, QStringLiteral("page-size"), onePage, onePage),
            arguments.isSet(QStringLiteral("full")),
            arguments.value(QStringLiteral("id")),
            device,
            QDateTime::currentDateTimeUtc(),
            dateOf(arguments)};
}

/// How long an import of this file may take on a slow phone.
std::chrono::milliseconds importLimit(const QString &path, std::chrono::milliseconds least)
{
    constexpr qint64 bytesInASecond = 64 * 1024;
    return least + std::chrono::seconds(QFileInfo(path).size() / bytesInASecond);
}

SyncRun::Outcome outcomeOf(SyncRun &run, const std::function<SyncRun::Outcome()> &start)
{
    const Interruption interruption;
    QObject::connect(&interruption, &Interruption::interrupted, &run, &SyncRun::interrupt);
    return start();
}

QJsonObject jsonOf(const SyncRun::Outcome &outcome, const QString &path)
{
    return {{QStringLiteral("status"), outcome.status.toString()},
            {QStringLiteral("cause"), outcome.cause},
            {QStringLiteral("file"), path}};
}

/// What an export wrote.
struct Written
{
    int contacts = 0;
    int missing = 0;  ///< contacts of the phone that could not be written
    int replaced = 0; ///< contacts of which characters could not be written
};

/// None when this program cannot read the file, which is no failure.
std::optional<Written> writtenTo(const QString &path)
{
    SyncFile file(path);
    Written written;
    const auto count = [&written](const SyncEntry &entry) {
        ++written.contacts;
        written.replaced += entry.isReplaced ? 1 : 0;
    };
    if (file.open() || file.read(count))
        return std::nullopt;
    written.missing = file.head().contacts.value_or(written.contacts) - written.contacts;
    return written;
}

ExitCode tellLosses(const Written &written, const QString &path)
{
    if (written.missing > 0)
        Report::problem(
            QStringLiteral("%1 contacts of the phone are not in %2, the directory's log tells why; to import "
                           "the file would remove them")
                .arg(written.missing)
                .arg(path));
    if (written.replaced > 0)
        Report::problem(QStringLiteral("%1 contacts hold characters that the file cannot; U+FFFD stands in their place")
                            .arg(written.replaced));
    return written.missing > 0 || written.replaced > 0 ? ExitCode::Refused : ExitCode::Done;
}

QString exportText(const SyncRun::Outcome &outcome, const QString &path, const std::optional<Written> &written)
{
    if (outcome.status.value() == ImpExpStatus::NothingToDo)
        return QStringLiteral("nothing to do: nothing has changed since then; %1 is not written").arg(path);
    const QString contacts = written ? QStringLiteral(" with %1 contacts").arg(written->contacts) : QString();
    return QStringLiteral("exported to %1%2").arg(path, contacts);
}

/// What went wrong, a line each; an exit code of failure when anything did.
ExitCode tellCause(const SyncRun::Outcome &outcome, const QString &what)
{
    const bool isFailure = outcome.status.value() == ImpExpStatus::Failure;
    if (isFailure && outcome.cause.isEmpty())
        Report::problem(QStringLiteral("%1: the directory does not say why; its log may").arg(what));
    for (const QString &line : outcome.cause.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        Report::problem(QStringLiteral("%1: %2").arg(what, line));
    return isFailure || !outcome.cause.isEmpty() ? ExitCode::Refused : ExitCode::Done;
}

} // namespace

QString SyncCommand::deviceOf(const QCommandLineParser &arguments)
{
    const QString device = QStringLiteral("device");
    return arguments.isSet(device) ? arguments.value(device) : QSysInfo::machineHostName();
}

CommandHelp SyncCommand::help() const
{
    return {
        {QStringLiteral("sync export FILE [--full] [--since DATE] [--page-size N] [--id TEXT] [--device TEXT]"),
         QStringLiteral("sync import FILE [--dry-run] [--yes] [--force] [--device TEXT]")},
        QStringLiteral(
            R"(Export has the directory write the contacts of the user into FILE: for each its id on the phone (duid)
and that of the other side (puid), with --full all that the file knows of it, the photo included.
With --since it does nothing when no contact has changed since (the first export after a start of the
directory, or after a change of its capacity, is made all the same); otherwise it always exports.
It ends with 1 when contacts, or characters of a contact, could not be written.

Import has the directory make its contacts those of FILE: contacts that it does not list are removed,
whole ones without a duid are created, those with one changed. It works in read-only mode too. When
single contacts cannot be imported the others are, each is told, and it ends with 1. --dry-run changes
nothing and tells how many contacts would be created, changed and removed. A terminal is asked before
contacts are removed, unless there is --yes or --force.

FILE is for keeping this phone in step with a PC: its ids mean contacts of this phone. A file that is
from another device, that lists nobody of here, or whose ids are not here or belong to quite different
contacts, would replace and remove the wrong ones and is refused without --force. To move to another phone use kestin-dir export
and import, which carry vCards.

It is the directory that reads and writes FILE, so its user must be allowed to. --timeout is how long
is waited without a sign of progress; for an import, 1 s more for each 64 KiB when it is not given.)"),
        {QStringLiteral("kestin-dir sync export contacts.xml --full"),
         QStringLiteral("kestin-dir sync export map.xml --since 2026-11-21T08:00:00Z"),
         QStringLiteral("kestin-dir sync import contacts.xml")}};
}

QList<QCommandLineOption> SyncCommand::options() const
{
    return {
        {QStringLiteral("full"), QStringLiteral("Export: whole contacts, not their ids only")},
        {QStringLiteral("since"), QStringLiteral("Export: only if anything has changed since"), QStringLiteral("DATE")},
        {QStringLiteral("page-size"), QStringLiteral("Export: contacts on a page of the file (0: one page)"),
         QStringLiteral("N")},
        {QStringLiteral("id"), QStringLiteral("Export: what the file says it is called"), QStringLiteral("TEXT")},
        {QStringLiteral("device"), QStringLiteral("The device that the file is from (this host's name)"),
         QStringLiteral("TEXT")},
        {QStringLiteral("dry-run"), QStringLiteral("Import: change nothing, tell what would be changed")},
        {QStringLiteral("force"), QStringLiteral("Import: a file of another phone, too")},
        Confirmation::option()};
}

ExitCode SyncCommand::exportTo(const QString &path, const QCommandLineParser &arguments, CommandContext &context)
{
    const ExportRequest request = requestOf(path, deviceOf(arguments), arguments);
    SyncRun run(context.bus, context.bus.limit());
    const SyncRun::Outcome outcome = outcomeOf(run, [&] { return run.exportTo(request); });
    const bool isWritten = outcome.status.value() == ImpExpStatus::Success;
    const std::optional<Written> written = isWritten ? writtenTo(path) : std::nullopt;
    if (context.json) {
        QJsonObject object = jsonOf(outcome, path);
        object.insert(QStringLiteral("contacts"), written ? QJsonValue(written->contacts) : QJsonValue());
        object.insert(QStringLiteral("missing"), written ? QJsonValue(written->missing) : QJsonValue());
        object.insert(QStringLiteral("replaced"), written ? QJsonValue(written->replaced) : QJsonValue());
        Report::json(context.out, object);
    } else if (outcome.status.value() != ImpExpStatus::Failure) {
        context.out << Printable::text(exportText(outcome, path, written)) << '\n';
    }
    const ExitCode losses = written ? tellLosses(*written, path) : ExitCode::Done;
    return std::max(losses, tellCause(outcome, QStringLiteral("the export failed")));
}

ExitCode SyncCommand::importFrom(const QString &path, const QCommandLineParser &arguments, CommandContext &context)
{
    if (arguments.isSet(QStringLiteral("dry-run")))
        return tryImport(path, arguments, context);
    if (!arguments.isSet(QStringLiteral("force")))
        expectWanted(path, arguments, context);
    const std::chrono::milliseconds least = context.bus.limit();
    SyncRun run(context.bus, arguments.isSet(QStringLiteral("timeout")) ? least : importLimit(path, least));
    const SyncRun::Outcome outcome = outcomeOf(run, [&] { return run.importFrom(path); });
    const bool isDone = outcome.status.value() != ImpExpStatus::Failure;
    const qsizetype problems = outcome.cause.split(QLatin1Char('\n'), Qt::SkipEmptyParts).size();
    const QString exceptions = problems > 0 ? QStringLiteral(", with %1 problems").arg(problems) : QString();
    if (context.json)
        Report::json(context.out, jsonOf(outcome, path));
    else if (isDone)
        context.out << Printable::text(QStringLiteral("imported %1%2").arg(path, exceptions)) << '\n';
    return tellCause(outcome, isDone ? QStringLiteral("not imported") : QStringLiteral("the import failed"));
}

ExitCode SyncCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    QStringList rest = arguments.positionalArguments();
    const QString action = rest.isEmpty() ? QString() : rest.takeFirst();
    const bool isExport = action == QLatin1String("export");
    if (!isExport && action != QLatin1String("import"))
        throw CommandFailure(ExitCode::Usage, QStringLiteral("sync takes export or import, not \"%1\"").arg(action));
    const QString path = QFileInfo(CommandArguments::one(rest, QStringLiteral("FILE"))).absoluteFilePath();
    return isExport ? exportTo(path, arguments, context) : importFrom(path, arguments, context);
}
