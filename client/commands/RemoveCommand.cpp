// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/DirectoryService.h"
#include "client/bus/RefusalText.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "platform/records/DirectoryCodes.h"

CommandHelp RemoveCommand::help() const
{
    return {{QStringLiteral("remove ID [ID...]")},
            QStringLiteral("Removes the contacts. One that is refused does not keep the others from being removed."),
            {QStringLiteral("kestin-dir remove '#CONTACT_12#' '#CONTACT_13#'")}};
}

ExitCode RemoveCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const DirectoryService directory(context.bus);
    ExitCode result = ExitCode::Done;
    for (const QString &id : CommandArguments::some(arguments.positionalArguments(), QStringLiteral("ID"))) {
        const int code = directory.remove(DirectoryService::newRequestId(), id);
        if (code == ResultCode::done)
            continue;
        Report::problem(RefusalText::ofRemove(code, id));
        result = ExitCode::Refused;
    }
    return result;
}
