// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Removes contacts by their ids, each by itself.
class RemoveCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("remove"); }
    QString summary() const override { return QStringLiteral("remove contacts"); }
    CommandHelp help() const override;
    bool printsData() const override { return false; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};
