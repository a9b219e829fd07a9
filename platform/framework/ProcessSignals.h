// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/OwnedDescriptor.h"

#include <QObject>

/// Turns signals of the process into Qt signals: SIGTERM and SIGINT, so that a program ends in order, or SIGHUP, for a
/// program that reads its configuration again. SIGPIPE is ignored: a log reader that went away must not end a service.
/// A process has at most one object of each kind, from before its first thread for as long as it runs; where a library
/// starts threads before there can be an object, `block` comes first.
class ProcessSignals : public QObject
{
    Q_OBJECT

public:
    enum class Kind {
        End,   ///< SIGTERM and SIGINT
        Reload ///< SIGHUP, which without an object of this kind ends the process
    };
    explicit ProcessSignals(Kind kind = Kind::End);

    /// Holds the signals back in this thread and those it starts, until there is an object for them.
    static void block(Kind kind = Kind::End);

Q_SIGNALS:
    void terminationRequested();
    void reloadRequested();

private:
    /// When it is closed the signals stay blocked: another signal must not break off the end.
    OwnedDescriptor m_descriptor;
};
