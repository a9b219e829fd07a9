// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

class ImportRun;

/// Creates contacts from vCard files, several calls in flight at a time.
class ImportCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("import"); }
    QString summary() const override { return QStringLiteral("create a contact for every card of a vCard file"); }
    CommandHelp help() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    static ExitCode importFile(const QString &path, ImportRun &run);
};
