// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/PeerServices.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/text/Table.h"
#include "client/text/Terminal.h"

CommandHelp SettingsCommand::help() const
{
    return {{QStringLiteral("settings [list]"), QStringLiteral("settings get KEY"),
             QStringLiteral("settings set KEY VALUE")},
            QStringLiteral("Reads and changes the platform's settings. The settings manager tells the modules that a\n"
                           "setting concerns when it changes."),
            {QStringLiteral("kestin-dir settings get DirMaxContact"),
             QStringLiteral("kestin-dir settings set DirMaxContact 500"),
             QStringLiteral("kestin-dir settings list --json")}};
}

void SettingsCommand::get(const QString &key, CommandContext &context)
{
    const QString value = SettingsService(context.bus).value(key);
    if (context.json)
        Report::json(context.out, {{QStringLiteral("key"), key}, {QStringLiteral("value"), value}});
    else
        context.out << Printable::text(value) << '\n';
}

void SettingsCommand::set(const QStringList &keyAndValue, CommandContext &context)
{
    if (keyAndValue.size() != 2)
        throw CommandFailure(ExitCode::Usage, QStringLiteral("settings set takes a KEY and a VALUE"));
    const UpdateReport report = SettingsService(context.bus).setValue(keyAndValue.first(), keyAndValue.last());
    if (report.code != 0)
        throw CommandFailure(ExitCode::Refused,
                             QStringLiteral("%1 is not changed: %2 (code %3)")
                                 .arg(keyAndValue.first(), report.message, QString::number(report.code)));
}

void SettingsCommand::list(CommandContext &context)
{
    const ListSetting settings = SettingsService(context.bus).all();
    if (context.json)
        return Report::json(context.out, settings);
    Table table({{QStringLiteral("KEY")},
                 {QStringLiteral("VALUE"), 12},
                 {QStringLiteral("DEFAULT"), 12, 1},
                 {QStringLiteral("DESCRIPTION"), 12}});
    for (const Setting &setting : settings)
        table.addRow({setting.key, setting.value, setting.defaultValue, setting.description});
    table.write(context.out, Terminal::outputWidth());
}

ExitCode SettingsCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    QStringList rest = arguments.positionalArguments();
    const QString action = rest.isEmpty() ? QStringLiteral("list") : rest.takeFirst();
    if (action == QLatin1String("get")) {
        get(CommandArguments::one(rest, QStringLiteral("KEY")), context);
    } else if (action == QLatin1String("set")) {
        set(rest, context);
    } else if (action == QLatin1String("list")) {
        CommandArguments::none(rest);
        list(context);
    } else {
        throw CommandFailure(ExitCode::Usage,
                             QStringLiteral("settings takes list, get or set, not \"%1\"").arg(action));
    }
    return ExitCode::Done;
}
