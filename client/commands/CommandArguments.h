// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/CommandFailure.h"
#include "platform/records/Contact.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

/// Checked access to a parsed command line. Each function throws CommandFailure with ExitCode::Usage and a sentence
/// that says what is wrong.
namespace CommandArguments {

/// The option's whole number, or `fallback` when it is not given.
int number(const QCommandLineParser &arguments, const QString &option, int fallback, int minimum);

/// The option "columns", with which a command lets its user choose what a table shows, and what it says: names that
/// ContactTable knows. Empty when it is not given.
QCommandLineOption columnsOption();
QStringList columns(const QCommandLineParser &arguments);

/// The only positional argument, not empty. `what` is what the argument is ("ID").
QString one(const QStringList &positional, const QString &what);
/// The positional arguments, of which there is at least the first. None is empty.
QStringList some(const QStringList &positional, const QString &what);
/// That the first positional argument is none of the words that a command takes there.
CommandFailure unknownAction(const QCommandLineParser &arguments, const QStringList &actions);
/// Accepts no positional argument.
void none(const QStringList &positional);

} // namespace CommandArguments

/// The options that name the fields of a contact, for the commands that write a contact.
namespace ContactOptions {

QList<QCommandLineOption> all();

/// Writes the fields that the command line names into the contact and leaves the others. An empty value clears a field
/// or takes a misc pair away. False when the command line names no field. Throws CommandFailure for a misc pair without
/// a "=".
bool apply(const QCommandLineParser &arguments, Contact &contact);

} // namespace ContactOptions
