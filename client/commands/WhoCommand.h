// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Finds the contacts that a number belongs to, as the phone does for a caller.
class WhoCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("who"); }
    QString summary() const override { return QStringLiteral("whose number is this?"); }
    CommandHelp help() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};
