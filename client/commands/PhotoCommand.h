// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

/// Gives a contact a photo, or takes it away.
class PhotoCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("photo"); }
    QString summary() const override { return QStringLiteral("set or remove the photo of a contact"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    int limitSeconds() const override { return downloadLimitSeconds; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    /// The directory ends a download after 30 s without data.
    static constexpr int downloadLimitSeconds = 40;
};
