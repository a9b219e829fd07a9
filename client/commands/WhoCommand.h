// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Finds the contacts that a number belongs to, as the phone does for a caller: the phone's own, else one of the
/// company directory.
class WhoCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("who"); }
    QString summary() const override { return QStringLiteral("whose number is this?"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    int limitSeconds() const override { return companyLimitSeconds; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};
