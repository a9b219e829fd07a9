// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/BusSession.h"
#include "client/bus/CommandFailure.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QTextStream>

/// What a command works with.
struct CommandContext
{
    const BusSession &bus;
    QTextStream &out;
    bool json; ///< print for scripts
};

/// What the help says about a command beside its options.
struct CommandHelp
{
    QStringList usage;    ///< what follows the program's name, a line for each form
    QString text;         ///< paragraphs; lines are broken as they stand
    QStringList examples; ///< whole command lines
};

/// A command of the program.
class Command
{
public:
    Command() = default;
    virtual ~Command() = default;
    Q_DISABLE_COPY_MOVE(Command)

    virtual QString name() const = 0;
    /// What the command does, in a few words, for the list of commands.
    virtual QString summary() const = 0;
    virtual CommandHelp help() const = 0;
    /// The options that only this command has. The dispatcher adds those that all commands have.
    virtual QList<QCommandLineOption> options() const { return {}; }
    virtual bool printsData() const { return true; }
    /// Seconds that the command waits for an answer when the user does not say. The company directory has 10 s for each
    /// step.
    virtual int limitSeconds() const { return ownLimitSeconds; }

    static constexpr int ownLimitSeconds = 10;
    static constexpr int companyLimitSeconds = 30;

    /// Does what the command is for. `arguments` holds the parsed command line without the command's name. Throws
    /// CommandFailure. A command that goes on after a refusal tells of it itself and returns the code.
    virtual ExitCode run(const QCommandLineParser &arguments, CommandContext &context) = 0;
};
