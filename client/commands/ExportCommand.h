// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Writes the contacts of the user as vCards.
class ExportCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("export"); }
    QString summary() const override { return QStringLiteral("write the contacts of the phone as vCards"); }
    CommandHelp help() const override;
    bool printsData() const override { return false; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};
