// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/DirectoryService.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/text/ContactText.h"

CommandHelp ShowCommand::help() const
{
    return {
        {QStringLiteral("show ID")},
        QStringLiteral("Prints every field that is set, one a line. Attributes of the misc map are called misc.KEY."),
        {QStringLiteral("kestin-dir show '#CONTACT_12#'"),
         QStringLiteral("kestin-dir show '#CONTACT_12#' --json | jq .misc")}};
}

ExitCode ShowCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QString id = CommandArguments::one(arguments.positionalArguments(), QStringLiteral("ID"));
    const std::optional<Contact> contact = DirectoryService(context.bus).byId(id);
    if (!contact)
        throw CommandFailure(ExitCode::Refused, QStringLiteral("no contact has the id %1").arg(id));
    if (context.json) {
        Report::json(context.out, RecordJson::of(*contact));
        return ExitCode::Done;
    }
    for (const auto &[field, value] : ContactText::setFields(*contact))
        context.out << Printable::text(field) << ": " << Printable::text(value) << '\n';
    return ExitCode::Done;
}
