// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"
#include "platform/records/Contact.h"

/// Prints the contacts of the directory, or those of one kind.
class ListCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("list"); }
    QString summary() const override { return QStringLiteral("list the contacts"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    static ListContact read(const QCommandLineParser &arguments, const BusSession &bus);
};
