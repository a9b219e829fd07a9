// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Prints events until it is interrupted or has seen as many as asked for.
class WatchCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("watch"); }
    QString summary() const override { return QStringLiteral("print the directory's events as they come"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};
