// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Has the directory write the synchronisation file, or make itself like one.
class SyncCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("sync"); }
    QString summary() const override { return QStringLiteral("export to and import from a synchronisation file"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    int limitSeconds() const override { return 60; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    static ExitCode exportTo(const QString &path, const QCommandLineParser &arguments, CommandContext &context);
    static ExitCode importFrom(const QString &path, const QCommandLineParser &arguments, CommandContext &context);
};
