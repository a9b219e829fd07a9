// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/ContactPages.h"
#include "client/bus/DirectoryService.h"
#include "client/bus/RefusalText.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "platform/records/DirectoryCodes.h"

namespace {

using Change = int (DirectoryService::*)(const QString &, const QString &) const;
using ToText = QString (*)(int, const QString &);

struct Action
{
    Change operation;
    ToText refusal;
    QLatin1String verb; ///< what happened to those that were not refused
};

ExitCode change(const QStringList &ids, const Action &action, const CommandContext &context)
{
    const DirectoryService directory(context.bus);
    Report::Changes changes;
    for (const QString &id : CommandArguments::some(ids, QStringLiteral("ID"))) {
        const int code = (directory.*action.operation)(DirectoryService::newRequestId(), id);
        if (code == ResultCode::done)
            changes.add(id);
        else
            changes.refuse(id, action.refusal(code, id));
    }
    return changes.finish(context, action.verb);
}

} // namespace

CommandHelp PreviewCommand::help() const
{
    return {{QStringLiteral("preview [list] [--columns LIST] [--start N] [--length N]"),
             QStringLiteral("preview add ID [ID...]"), QStringLiteral("preview remove ID [ID...]")},
            QStringLiteral("Lists the contacts of the preview list, adds contacts to it or takes them out of it.\n"
                           "kestin-dir list --help names the columns."),
            {QStringLiteral("kestin-dir preview"), QStringLiteral("kestin-dir preview add '#CONTACT_12#'")}};
}

QList<QCommandLineOption> PreviewCommand::options() const
{
    return {{QStringLiteral("start"), QStringLiteral("List: leave out the first N contacts"), QStringLiteral("N")},
            {QStringLiteral("length"), QStringLiteral("List: at most N contacts"), QStringLiteral("N")},
            CommandArguments::columnsOption()};
}

ExitCode PreviewCommand::list(const QCommandLineParser &arguments, CommandContext &context)
{
    const int start = CommandArguments::number(arguments, QStringLiteral("start"), 0, 0);
    const int length = CommandArguments::number(arguments, QStringLiteral("length"), ContactPages::toTheEnd, 0);
    const DirectoryService directory(context.bus);
    ContactPages pages([&directory](int from, int count) { return directory.previewPage(from, count); });
    Report::contacts(context.out, pages.read(start, length), context.json, CommandArguments::columns(arguments));
    return ExitCode::Done;
}

ExitCode PreviewCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    QStringList rest = arguments.positionalArguments();
    const QString action = rest.isEmpty() ? QStringLiteral("list") : rest.takeFirst();
    if (action == QLatin1String("add"))
        return change(rest, {&DirectoryService::addToPreview, &RefusalText::ofAddToPreview, QLatin1String("added")},
                      context);
    if (action == QLatin1String("remove"))
        return change(
            rest, {&DirectoryService::removeFromPreview, &RefusalText::ofRemoveFromPreview, QLatin1String("removed")},
            context);
    if (action != QLatin1String("list"))
        throw CommandArguments::unknownAction(
            arguments, {QStringLiteral("list"), QStringLiteral("add"), QStringLiteral("remove")});
    CommandArguments::none(rest);
    return list(arguments, context);
}
