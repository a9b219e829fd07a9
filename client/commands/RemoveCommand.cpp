// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/DirectoryService.h"
#include "client/bus/RefusalText.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Confirmation.h"
#include "client/commands/Report.h"
#include "platform/records/DirectoryCodes.h"

namespace {

void confirm(const QStringList &ids, const DirectoryService &directory)
{
    constexpr qsizetype mostNamed = 5;
    QStringList names;
    for (const QString &id : ids.mid(0, mostNamed)) {
        const std::optional<Contact> contact = directory.byId(id);
        names.append(contact ? QStringLiteral("%1 (%2)").arg(contact->displayName(), id) : id);
    }
    QString whom = names.join(QLatin1String(", "));
    if (ids.size() > mostNamed)
        whom += QStringLiteral(" and %1 more").arg(ids.size() - mostNamed);
    Confirmation::ask(QStringLiteral("Remove %1?").arg(whom));
}

} // namespace

CommandHelp RemoveCommand::help() const
{
    return {
        {QStringLiteral("remove ID [ID...] [--yes]")},
        QStringLiteral("Removes the contacts; a terminal is asked first. One that is refused does not keep the others\n"
                       "from being removed. With --json an object tells \"removed\" and \"refused\"."),
        {QStringLiteral("kestin-dir remove '#CONTACT_12#' '#CONTACT_13#'")}};
}

QList<QCommandLineOption> RemoveCommand::options() const
{
    return {Confirmation::option()};
}

ExitCode RemoveCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QStringList ids = CommandArguments::some(arguments.positionalArguments(), QStringLiteral("ID"));
    const DirectoryService directory(context.bus);
    if (Confirmation::isWanted(arguments))
        confirm(ids, directory);
    Report::Changes changes;
    for (const QString &id : ids) {
        const int code = directory.remove(DirectoryService::newRequestId(), id);
        if (code == ResultCode::done)
            changes.add(id);
        else
            changes.refuse(id, RefusalText::ofRemove(code, id));
    }
    return changes.finish(context, QLatin1String("removed"));
}
