// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Prints one contact, every field that is set.
class ShowCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("show"); }
    QString summary() const override { return QStringLiteral("show a contact with all its fields"); }
    CommandHelp help() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};
