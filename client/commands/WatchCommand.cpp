// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/DirectoryService.h"
#include "client/bus/EventStream.h"
#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Interruption.h"
#include "client/commands/Report.h"
#include "client/text/EventText.h"
#include "platform/records/KestinBus.h"

#include <QDateTime>
#include <QEventLoop>

namespace {

void print(CommandContext &context, const QString &eventName, const ListEventArgument &arguments)
{
    const QDateTime now = QDateTime::currentDateTime();
    if (context.json) {
        Report::json(context.out, {{QStringLiteral("time"), now.toString(Qt::ISODateWithMs)},
                                   {QStringLiteral("event"), eventName},
                                   {QStringLiteral("arguments"), EventText::json(arguments)}});
    } else {
        const QStringList fields =
            QStringList{now.toString(QStringLiteral("HH:mm:ss.zzz")), eventName} + EventText::arguments(arguments);
        context.out << Printable::text(fields.join(QLatin1Char(' '))) << '\n';
    }
    // Whoever reads a pipe wants the event when it comes.
    context.out.flush();
}

} // namespace

CommandHelp WatchCommand::help() const
{
    return {{QStringLiteral("watch [--count N]")},
            QStringLiteral("Prints the time, the name and the arguments of each event, one line each, until Ctrl-C or\n"
                           "until N have come. The directory need not run yet. With --json one object a line."),
            {QStringLiteral("kestin-dir watch"), QStringLiteral("kestin-dir watch --count 1 --json")}};
}

QList<QCommandLineOption> WatchCommand::options() const
{
    return {{QStringLiteral("count"), QStringLiteral("End after N events"), QStringLiteral("N")}};
}

ExitCode WatchCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    CommandArguments::none(arguments.positionalArguments());
    int left = CommandArguments::number(arguments, QStringLiteral("count"), -1, 1);
    const Interruption interruption;
    const EventStream events(context.bus);
    QEventLoop loop;
    ExitCode result = ExitCode::Done;
    QObject::connect(&interruption, &Interruption::interrupted, &loop, &QEventLoop::quit);
    QObject::connect(&events, &EventStream::received, &loop,
                     [&](const QString &eventName, const ListEventArgument &eventArguments) {
                         // Events may be waiting behind the last one wanted.
                         if (left != 0)
                             print(context, eventName, eventArguments);
                         if (left > 0 && --left == 0)
                             loop.quit();
                     });
    QObject::connect(&events, &EventStream::disconnected, &loop, [&] {
        Report::problem(QStringLiteral("the message bus closed the connection"));
        result = ExitCode::NoService;
        loop.quit();
    });
    Report::note(context.bus.isRunning(ModuleName::directory)
                     ? QStringLiteral("watching; Ctrl-C ends")
                     : QStringLiteral("watching, but the directory is not running yet; Ctrl-C ends"));
    loop.exec();
    return result;
}
