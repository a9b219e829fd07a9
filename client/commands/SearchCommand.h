// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"
#include "client/search/SearchRun.h"

/// Searches the phone and the company directory, by name or by number.
class SearchCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("search"); }
    QString summary() const override { return QStringLiteral("search the phone and the company directory"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    int limitSeconds() const override { return companyLimitSeconds; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    struct Request;
    static Request requestOf(const QCommandLineParser &arguments);
    static EventWait::End follow(const Request &request, SearchRun &search, CommandContext &context);
    static void print(ListContactSummary contacts, const Request &request, CommandContext &context);
};
