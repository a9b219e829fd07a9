// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Lists and changes the preview list.
class PreviewCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("preview"); }
    QString summary() const override { return QStringLiteral("the contacts that the phone shows without a search"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    static ExitCode list(const QCommandLineParser &arguments, CommandContext &context);
};
