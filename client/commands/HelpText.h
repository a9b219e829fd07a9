// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

#include <memory>
#include <vector>

/// The help pages. The completion script reads them as well: a command, and an option, begins a line after two blanks.
namespace HelpText {

QString ofProgram(const std::vector<std::unique_ptr<Command>> &commands);

/// `options` are all that the command takes, the common ones included.
QString ofCommand(const Command &command, const QList<QCommandLineOption> &options);

} // namespace HelpText
