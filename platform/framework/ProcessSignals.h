// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/OwnedDescriptor.h"

#include <QObject>

/// Turns SIGTERM and SIGINT into a Qt signal, so that a program ends in order. SIGPIPE is ignored: a log reader that
/// went away must not end a service. A process has a single object of this class for as long as it runs.
class ProcessSignals : public QObject
{
    Q_OBJECT

public:
    explicit ProcessSignals(QObject *parent = nullptr);

Q_SIGNALS:
    void terminationRequested();

private:
    /// When it is closed the signals stay blocked: another signal must not break off the end.
    OwnedDescriptor m_descriptor;
};
