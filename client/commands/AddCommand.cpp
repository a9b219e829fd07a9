// SPDX-License-Identifier: Apache-2.0
#include "client/commands/AddCommand.h"

#include "client/bus/DirectoryService.h"
#include "client/bus/EventStream.h"
#include "client/bus/RefusalText.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/ContactOptions.h"
#include "client/commands/Report.h"

#include <QEventLoop>
#include <QTimer>

namespace {

/// The id in a creation event, empty when the event answers another request.
QString createdId(const ListEventArgument &arguments, const QString &requestId)
{
    if (arguments.size() < 2 || arguments.at(0).value.toString() != requestId)
        return {};
    const auto contacts = qdbus_cast<ListContact>(arguments.at(1).value);
    return contacts.isEmpty() ? QString() : contacts.first().contactId;
}

/// Creates the contact and waits for the event that tells its id.
QString create(const BusSession &bus, const Contact &contact)
{
    const QString requestId = DirectoryService::newRequestId();
    EventStream events(bus, QStringLiteral("DIR_CONTACTS_CREATED"));
    QEventLoop loop;
    QString id;
    QObject::connect(&events, &EventStream::received, &loop, [&](const QString &, const ListEventArgument &arguments) {
        id = createdId(arguments, requestId);
        if (!id.isEmpty())
            loop.quit();
    });
    QObject::connect(&events, &EventStream::disconnected, &loop, &QEventLoop::quit);
    const int code = DirectoryService(bus).create(requestId, contact);
    if (code != 0)
        throw CommandFailure(ExitCode::Refused, RefusalText::ofCreate(code, contact));
    QTimer::singleShot(bus.limit(), &loop, &QEventLoop::quit);
    loop.exec();
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
