// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

/// Turns SIGTERM and SIGINT into a Qt signal, so that a program ends in order. SIGPIPE is ignored: a log reader that
/// went away must not end a service. A process has a single object of this class for as long as it runs.
class ProcessSignals : public QObject
{
    Q_OBJECT

public:
    explicit ProcessSignals(QObject *parent = nullptr);
    ~ProcessSignals() override;

Q_SIGNALS:
    void terminationRequested();

private:
    int m_descriptor = -1;
};
