// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Speaks to the settings manager, from which the directory has its configuration.
class SettingsCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("settings"); }
    QString summary() const override { return QStringLiteral("read and change the platform's settings"); }
    CommandHelp help() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    static void get(const QString &key, CommandContext &context);
    static void set(const QStringList &keyAndValue, CommandContext &context);
    static void list(CommandContext &context);
};
