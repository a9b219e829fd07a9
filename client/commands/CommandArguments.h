// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCommandLineParser>

/// Checked access to a parsed command line. Each throws CommandFailure with ExitCode::Usage and a sentence that says
/// what is wrong.
namespace CommandArguments {

/// The option's whole number, or `fallback` when it is not given.
int number(const QCommandLineParser &arguments, const QString &option, int fallback, int minimum);

/// Exactly one positional argument, not empty. `what` is what it is ("ID").
QString one(const QStringList &positional, const QString &what);
/// At least one.
QStringList some(const QStringList &positional, const QString &what);
/// None.
void none(const QStringList &positional);

} // namespace CommandArguments
