// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

/// The options that name the fields of a contact, for the commands that write one.
namespace ContactOptions {

QList<QCommandLineOption> all();

/// Writes the fields that the command line names into the contact and leaves the others. An empty value clears a
/// field or takes a misc pair away. False when it names none. Throws CommandFailure for a misc pair without a "=".
bool apply(const QCommandLineParser &arguments, Contact &contact);

} // namespace ContactOptions
