// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/DirectoryService.h"
#include "client/bus/RefusalText.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "platform/records/DirectoryCodes.h"

CommandHelp EditCommand::help() const
{
    return {{QStringLiteral("edit ID [fields]")},
            QStringLiteral("Changes the named fields and leaves the others. An empty value clears a field;\n"
                           "--misc KEY= takes an attribute away."),
            {QStringLiteral("kestin-dir edit '#CONTACT_12#' --mobile '+33 6 12 34 56 78' --fax ''"),
             QStringLiteral("kestin-dir edit '#CONTACT_12#' --misc floor=3 --misc badge=")}};
}

QList<QCommandLineOption> EditCommand::options() const
{
    return ContactOptions::all();
}

ExitCode EditCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QString id = CommandArguments::one(arguments.positionalArguments(), QStringLiteral("ID"));
    Contact probe;
    if (!ContactOptions::apply(arguments, probe))
        throw CommandFailure(ExitCode::Usage, QStringLiteral("no field to change is named"));
    const DirectoryService directory(context.bus);
    std::optional<Contact> contact = directory.byId(id);
    if (!contact)
        throw CommandFailure(ExitCode::Refused, QStringLiteral("no contact has the id %1").arg(id));
    ContactOptions::apply(arguments, *contact);
    const int code = directory.modify(DirectoryService::newRequestId(), *contact);
    if (code != ResultCode::done)
        throw CommandFailure(ExitCode::Refused, RefusalText::ofModify(code, *contact));
    if (context.json)
        Report::json(context.out, {{QStringLiteral("contactId"), id}});
    return ExitCode::Done;
}
