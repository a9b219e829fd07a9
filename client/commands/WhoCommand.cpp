// SPDX-License-Identifier: Apache-2.0
#include "client/commands/WhoCommand.h"

#include "client/bus/DirectoryService.h"
#include "client/bus/TelephonyService.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/text/ContactText.h"

CommandHelp WhoCommand::help() const
{
    return {{QStringLiteral("who NUMBER")},
            QStringLiteral("Prints the names of everybody with this number, one a line, and ends with 1 when there is\n"
                           "nobody. The number is brought into its canonical form by the phone's telephony first, as\n"
                           "for a caller; without telephony it is looked for as it stands."),
            {QStringLiteral("kestin-dir who '+33 1 55 66 70 00'"), QStringLiteral("kestin-dir who 7000 --json")}};
}

ExitCode WhoCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QString number = CommandArguments::one(arguments.positionalArguments(), QStringLiteral("NUMBER"));
    const ListContact contacts =
        DirectoryService(context.bus).byNumber(TelephonyService(context.bus).canonicalNumber(number));
    if (context.json)
        Report::json(context.out, contacts);
    else
        for (const Contact &contact : contacts)
            context.out << Printable::text(ContactText::displayName(contact)) << '\n';
    if (contacts.isEmpty())
        throw CommandFailure(ExitCode::Refused, QStringLiteral("nobody has the number %1").arg(number));
    return ExitCode::Done;
}
