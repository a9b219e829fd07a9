// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

/// Tells when another module leaves the bus, however it ended, and when it comes to it. What it was asked and has not
/// answered by then it will not answer. Main thread only.
class ModuleWatch : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void left();
    void came();
};
