// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Reads a contact, changes the named fields and writes it back.
class EditCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("edit"); }
    QString summary() const override { return QStringLiteral("change fields of a contact"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    bool printsData() const override { return false; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};
