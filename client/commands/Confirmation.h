// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>

/// The question before something is done that cannot be undone. Only a person at a terminal is asked, and not with the
/// option --yes; a script has thought about it.
namespace Confirmation {

/// The option, for the commands that ask.
QCommandLineOption option();

bool isWanted(const QCommandLineParser &arguments);

/// Asks, "question [y/N]", and throws CommandFailure unless the answer is yes.
void ask(const QString &question);

} // namespace Confirmation
