// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

/// Tells when another module leaves the bus, however it ended, and when the module comes to the bus. A module that left
/// will not answer what it was asked before.
class ModuleWatch : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void left();
    void came();
};
