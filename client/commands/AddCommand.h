// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Creates a contact and prints the id that the directory gave it.
class AddCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("add"); }
    QString summary() const override { return QStringLiteral("create a contact"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};
