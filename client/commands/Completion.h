// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"

#include <memory>
#include <vector>

/// What a shell can offer for the word that is being typed. The completion scripts of the shells run it as
/// "kestin-dir complete WORD...", which no help tells.
class Completion
{
public:
    struct Candidate
    {
        QString text;
        QString description;
    };

    explicit Completion(const std::vector<std::unique_ptr<Command>> &commands)
        : m_commands(commands)
    {
    }

    /// `words` stand behind the program's name; the last is being typed. Writes each candidate on a line, with its
    /// description behind a tab, or ":files" where the shell is to offer files. Services that do not answer soon
    /// are not waited for.
    void print(const QStringList &words, QTextStream &out) const;

private:
    QList<Candidate> candidates(const QStringList &words) const;
    static QList<Candidate> ofCommand(const Command &command, const QStringList &words);

    const std::vector<std::unique_ptr<Command>> &m_commands;
};
