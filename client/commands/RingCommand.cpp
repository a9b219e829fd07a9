// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/EventRaising.h"
#include "client/commands/CommandArguments.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

namespace {

/// An empty number is a number here.
QString numberOf(const QStringList &positional)
{
    return positional == QStringList(QString()) ? QString()
                                                : CommandArguments::one(positional, QStringLiteral("NUMBER"));
}

} // namespace

CommandHelp RingCommand::help() const
{
    return {
        {QStringLiteral("ring NUMBER"), QStringLiteral("ring --end")},
        QStringLiteral("Tells the screen (kestin-presentation) that a call comes in from this number, as telephony\n"
                       "does on a phone, or that it has ended. An empty number is one that is withheld."),
        {QStringLiteral("kestin-dir ring '+33 1 55 66 70 00'"), QStringLiteral("kestin-dir ring --end")}};
}

QList<QCommandLineOption> RingCommand::options() const
{
    return {{QStringLiteral("end"), QStringLiteral("The call has ended")}};
}

ExitCode RingCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const bool isEnd = arguments.isSet(QStringLiteral("end"));
    ListEventArgument event;
    if (isEnd)
        CommandArguments::none(arguments.positionalArguments());
    else
        event = {{ArgumentName::phoneNumber, numberOf(arguments.positionalArguments())}};
    if (!context.bus.isRunning(ModuleName::presentation))
        throw CommandFailure(
            ExitCode::NoService,
            QStringLiteral("no screen shows it: the module %1 is not on the bus").arg(ModuleName::presentation));
    raiseEvent(context.bus, ModuleName::telephony, isEnd ? EventName::callEnded : EventName::incomingCall, event);
    return ExitCode::Done;
}
