// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusMessage>
#include <QString>

#include <stdexcept>

/// The exit codes of the program. Its help lists them, and scripts rely on them.
enum class ExitCode {
    Done = 0,
    Refused = 1,   ///< the directory, or the settings manager, said no; nobody found
    Usage = 2,     ///< the command line makes no sense
    NoService = 3, ///< the bus or the service cannot be reached
    FileError = 4, ///< a file cannot be read, or the output cannot be written
    NoAnswer = 5,  ///< a service said nothing within the limit
};

/// Ends a command. Holds what to tell the user, and the exit code.
class CommandFailure : public std::runtime_error
{
public:
    CommandFailure(ExitCode code, const QString &text)
        : std::runtime_error(text.toStdString())
        , m_code(code)
    {
    }

    ExitCode code() const { return m_code; }
    QString text() const { return QString::fromUtf8(what()); }

private:
    ExitCode m_code;
};

/// A call that was answered by an error, or not at all, in words for the user.
class BusFailure : public CommandFailure
{
public:
    /// `module` is the module that was called. `reply` is the error that came instead of an answer.
    BusFailure(const QString &module, const QDBusMessage &reply);

    /// The answer would be larger than what the bus carries.
    bool isTooLarge() const { return m_tooLarge; }

private:
    bool m_tooLarge;
};
