// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

#include <memory>
#include <vector>

/// Finds the command that a command line names, runs it, and tells a failure on standard error.
class Dispatcher
{
public:
    Dispatcher();

    /// `arguments` is the command line without the program's name. Returns the exit code of the process.
    int run(const QStringList &arguments);

    /// All options that a command takes, those that all commands have included.
    static QList<QCommandLineOption> optionsOf(const Command &command);

private:
    ExitCode dispatch(const QStringList &arguments);
    ExitCode runCommand(Command &command, const QStringList &arguments);
    Command *find(const QString &name) const;

    std::vector<std::unique_ptr<Command>> m_commands;
    QTextStream m_out;
};

/// The help pages.
namespace HelpText {

QString ofProgram(const std::vector<std::unique_ptr<Command>> &commands);

/// `options` are all options that the command takes, the common options included.
QString ofCommand(const Command &command, const QList<QCommandLineOption> &options);

/// The page with its lines broken anew for the terminal, examples excepted. A width of 0 changes nothing.
QString fitted(const QString &page, int terminalWidth);

} // namespace HelpText
