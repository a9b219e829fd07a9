// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

/// Turns SIGTERM and SIGINT into a Qt signal on the main thread, so that a program ends in order. SIGPIPE is ignored:
/// a log reader that went away must not end a service. One object a process, for as long as it runs.
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
