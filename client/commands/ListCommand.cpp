// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/ContactPages.h"
#include "client/bus/DirectoryService.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/text/ContactText.h"

namespace {

qint32 typeOf(const QString &word)
{
    const std::optional<qint32> type = ContactText::typeOf(word);
    if (!type)
        throw CommandFailure(ExitCode::Usage, QStringLiteral("--type takes %1 or a number, not \"%2\"")
                                                  .arg(ContactText::typeNames().join(QLatin1String(", ")), word));
    return *type;
}

} // namespace

CommandHelp ListCommand::help() const
{
    return {
        {QStringLiteral("list [--type KIND] [--start N] [--length N]")},
        QStringLiteral("Prints a table of the contacts, ordered by name, cut to the width of the terminal.\n"
                       "--start and --length pick contacts in the order in which the directory keeps them (by id),\n"
                       "so that a long directory can be read in pieces."),
        {QStringLiteral("kestin-dir list"), QStringLiteral("kestin-dir list --type cached"),
         QStringLiteral("kestin-dir list --start 100 --length 50"),
         QStringLiteral("kestin-dir list --json | jq -r '.[].email'")}};
}

QList<QCommandLineOption> ListCommand::options() const
{
    return {{QStringLiteral("type"),
             QStringLiteral("Only contacts of this kind: %1, or a number")
                 .arg(ContactText::typeNames().join(QLatin1String(", "))),
             QStringLiteral("KIND")},
            {QStringLiteral("start"), QStringLiteral("Leave out the first N contacts"), QStringLiteral("N")},
            {QStringLiteral("length"), QStringLiteral("At most N contacts"), QStringLiteral("N")}};
}

ListContact ListCommand::read(const QCommandLineParser &arguments, const BusSession &bus)
{
    const int start = CommandArguments::number(arguments, QStringLiteral("start"), 0, 0);
    const int length = CommandArguments::number(arguments, QStringLiteral("length"), ContactPages::toTheEnd, 0);
    const DirectoryService directory(bus);
    if (!arguments.isSet(QStringLiteral("type"))) {
        ContactPages pages([&directory](int from, int count) { return directory.page(from, count); });
        return pages.read(start, length);
    }
    ListContact contacts =
        contactsOfType(directory, typeOf(arguments.value(QStringLiteral("type")))).mid(start, length);
    sortByName(contacts);
    return contacts;
}

ExitCode ListCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    CommandArguments::none(arguments.positionalArguments());
    Report::contacts(context.out, read(arguments, context.bus), context.json);
    return ExitCode::Done;
}
