// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Takes a contact of the company directory over to the phone.
class CopyCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("copy"); }
    QString summary() const override { return QStringLiteral("copy a contact of the company directory to the phone"); }
    CommandHelp help() const override;
    int limitSeconds() const override { return companyLimitSeconds; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};
