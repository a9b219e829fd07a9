// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Dispatcher.h"

#include "client/commands/CommandArguments.h"
#include "client/commands/Commands.h"
#include "client/commands/Completion.h"
#include "client/commands/Report.h"
#include "client/text/Suggestion.h"
#include "client/text/Terminal.h"

#include <QRegularExpression>

#include <cstdio>

namespace {

QString faultOf(const QCommandLineParser &parser, const QList<QCommandLineOption> &options)
{
    QStringList names;
    for (const QCommandLineOption &option : options)
        names.append(QLatin1String("--") + option.names().last());
    const QString text = parser.errorText().remove(QRegularExpression(QStringLiteral("\\.$")));
    const QString unknown = parser.unknownOptionNames().value(0);
    return unknown.isEmpty() ? text : text + Suggestion::phrase(QLatin1String("--") + unknown, names);
}

bool isHelp(const QString &argument)
{
    return argument == QLatin1String("--help") || argument == QLatin1String("-h") || argument == QLatin1String("help");
}

bool isVersion(const QString &argument)
{
    return argument == QLatin1String("--version") || argument == QLatin1String("-V");
}

} // namespace

QList<QCommandLineOption> Dispatcher::optionsOf(const Command &command)
{
    QList<QCommandLineOption> options = command.options();
    if (command.printsData())
        options.append({QStringLiteral("json"), QStringLiteral("Print JSON, problems on standard error too")});
    options.append({QStringLiteral("timeout"),
                    QStringLiteral("Wait at most N seconds for an answer (%1)").arg(command.limitSeconds()),
                    QStringLiteral("N")});
    options.append({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("This text")});
    return options;
}

Dispatcher::Dispatcher()
    : m_out(stdout)
{
    m_commands.push_back(std::make_unique<ListCommand>());
    m_commands.push_back(std::make_unique<ShowCommand>());
    m_commands.push_back(std::make_unique<AddCommand>());
    m_commands.push_back(std::make_unique<EditCommand>());
    m_commands.push_back(std::make_unique<RemoveCommand>());
    m_commands.push_back(std::make_unique<WhoCommand>());
    m_commands.push_back(std::make_unique<SearchCommand>());
    m_commands.push_back(std::make_unique<CopyCommand>());
    m_commands.push_back(std::make_unique<PreviewCommand>());
    m_commands.push_back(std::make_unique<PhotoCommand>());
    m_commands.push_back(std::make_unique<ImportCommand>());
    m_commands.push_back(std::make_unique<ExportCommand>());
    m_commands.push_back(std::make_unique<SyncCommand>());
    m_commands.push_back(std::make_unique<RecoverCommand>());
    m_commands.push_back(std::make_unique<DefaultsCommand>());
    m_commands.push_back(std::make_unique<RingCommand>());
    m_commands.push_back(std::make_unique<WatchCommand>());
    m_commands.push_back(std::make_unique<SettingsCommand>());
}

Command *Dispatcher::find(const QString &name) const
{
    for (const auto &command : m_commands) {
        if (command->name() == name)
            return command.get();
    }
    QStringList names;
    for (const auto &command : m_commands)
        names.append(command->name());
    const QString meant = Suggestion::closest(name, names);
    throw CommandFailure(ExitCode::Usage,
                         QStringLiteral("there is no command \"%1\"; %2kestin-dir --help lists them")
                             .arg(name, meant.isEmpty() ? QString() : QStringLiteral("did you mean %1? ").arg(meant)));
}

ExitCode Dispatcher::runCommand(Command &command, const QStringList &arguments)
{
    const QList<QCommandLineOption> options = optionsOf(command);
    QCommandLineParser parser;
    parser.addOptions(options);
    if (!parser.parse(QStringList{command.name()} + arguments))
        throw CommandFailure(ExitCode::Usage, faultOf(parser, options));
    if (parser.isSet(QStringLiteral("help"))) {
        m_out << HelpText::fitted(HelpText::ofCommand(command, options), Terminal::outputWidth());
        return ExitCode::Done;
    }
    constexpr int shortestLimit = 1;
    const std::chrono::seconds limit(
        CommandArguments::number(parser, QStringLiteral("timeout"), command.limitSeconds(), shortestLimit));
    const BusSession bus(limit);
    CommandContext context{bus, m_out, command.printsData() && parser.isSet(QStringLiteral("json"))};
    return command.run(parser, context);
}

ExitCode Dispatcher::dispatch(const QStringList &arguments)
{
    if (arguments.isEmpty())
        throw CommandFailure(ExitCode::Usage, QStringLiteral("no command is given; kestin-dir --help lists them"));
    if (arguments.first() == QLatin1String("complete")) {
        Completion(m_commands).print(arguments.mid(1), m_out);
        return ExitCode::Done;
    }
    if (arguments.first() == QLatin1String("help") && arguments.size() > 1 && !isHelp(arguments.at(1))) {
        const Command *command = find(arguments.at(1));
        m_out << HelpText::fitted(HelpText::ofCommand(*command, optionsOf(*command)), Terminal::outputWidth());
        return ExitCode::Done;
    }
    if (isHelp(arguments.first())) {
        m_out << HelpText::fitted(HelpText::ofProgram(m_commands), Terminal::outputWidth());
        return ExitCode::Done;
    }
    if (isVersion(arguments.first())) {
        m_out << "kestin-dir " KESTIN_VERSION "\n";
        return ExitCode::Done;
    }
    Command *command = find(arguments.first());
    try {
        return runCommand(*command, arguments.mid(1));
    } catch (const CommandFailure &failure) {
        if (failure.code() != ExitCode::Usage)
            throw;
        throw CommandFailure(
            ExitCode::Usage,
            QStringLiteral("%1; kestin-dir %2 --help tells how it is used").arg(failure.text(), command->name()));
    }
}

int Dispatcher::run(const QStringList &arguments)
{
    if (arguments.contains(QLatin1String("--json")))
        Report::useJson();
    ExitCode result = ExitCode::Done;
    try {
        result = dispatch(arguments);
    } catch (const CommandFailure &failure) {
        m_out.flush();
        Report::failure(failure);
        result = failure.code();
    }
    m_out.flush();
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        const CommandFailure failure(ExitCode::FileError, QStringLiteral("the output cannot be written"));
        Report::failure(failure);
        result = failure.code();
    }
    return int(result);
}
