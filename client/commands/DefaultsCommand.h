// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

struct DefaultContacts;

/// Shows and replaces the contacts of device management.
class DefaultsCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("defaults"); }
    QString summary() const override { return QStringLiteral("show or replace the contacts of device management"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    static ExitCode set(const DefaultContacts &contacts, CommandContext &context);
};
