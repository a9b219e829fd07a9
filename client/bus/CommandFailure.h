// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/ExitCode.h"

#include <QString>

#include <stdexcept>

/// Ends a command: what to tell the user, and the exit code.
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
