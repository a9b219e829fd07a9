// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/DirectoryService.h"
#include "client/bus/EventWait.h"
#include "client/bus/RefusalText.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/text/EventText.h"
#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

namespace {

/// Creates the contact and waits for the event that tells its id.
QString create(const BusSession &bus, const Contact &contact)
{
    const QString requestId = DirectoryService::newRequestId();
    EventWait wait(bus);
    wait.listen({EventName::contactsCreated}, ModuleName::directory);
    const int code = DirectoryService(bus).create(requestId, contact);
    if (code != ResultCode::done)
        throw CommandFailure(ExitCode::Refused, RefusalText::ofCreate(code, contact));
    QString id;
    wait.run([&](const QString &, const ListEventArgument &arguments) {
        if (EventValue::of<QString>(arguments, ArgumentName::reqId) == requestId)
            id = EventValue::of<ListContact>(arguments, ArgumentName::contacts).value(0).contactId;
        return !id.isEmpty();
    });
    if (id.isEmpty())
        throw CommandFailure(ExitCode::NoAnswer,
                             QStringLiteral("the contact is created, but the directory did not tell its id"));
    return id;
}

} // namespace

CommandHelp AddCommand::help() const
{
    return {{QStringLiteral("add --last-name TEXT [other fields]")},
            QStringLiteral("Creates a contact of the user and prints the id that the directory gave it. A first or a\n"
                           "last name is needed."),
            {QStringLiteral("kestin-dir add --first-name Zoë --last-name Müller --office '+33 1 55 66 70 00'"),
             QStringLiteral("kestin-dir add --last-name Reception --extension 100 --misc floor=2")}};
}

QList<QCommandLineOption> AddCommand::options() const
{
    return ContactOptions::all();
}

ExitCode AddCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    CommandArguments::none(arguments.positionalArguments());
    Contact contact;
    ContactOptions::apply(arguments, contact);
    if (contact.firstName.isEmpty() && contact.name.isEmpty())
        throw CommandFailure(ExitCode::Usage, QStringLiteral("--first-name or --last-name is missing"));
    const QString id = create(context.bus, contact);
    if (context.json)
        Report::json(context.out, {{QStringLiteral("contactId"), id}});
    else
        context.out << Printable::text(id) << '\n';
    return ExitCode::Done;
}
