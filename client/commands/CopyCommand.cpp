// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Interruption.h"
#include "client/commands/Report.h"
#include "client/search/ContactCopy.h"

CommandHelp CopyCommand::help() const
{
    return {{QStringLiteral("copy ID")},
            QStringLiteral("Makes a contact of the user from one of the company directory, whose id kestin-dir search\n"
                           "tells, and prints the id of the new contact."),
            {QStringLiteral("kestin-dir copy 'uid=zoe.muller,ou=people,dc=example,dc=org##'")}};
}

ExitCode CopyCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QString id = CommandArguments::one(arguments.positionalArguments(), QStringLiteral("ID"));
    const Interruption interruption;
    ContactCopy copy(context.bus);
    QObject::connect(&interruption, &Interruption::interrupted, &copy, &ContactCopy::interrupt);
    const QString newId = copy.copy(id);
    if (context.json)
        Report::json(context.out, {{QStringLiteral("contactId"), newId}});
    else
        context.out << Printable::text(newId) << '\n';
    return ExitCode::Done;
}
