// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

/// Turns Ctrl-C and SIGTERM into a signal of the event loop while it lives, so that a command can end in order. The
/// second one ends the program at once. One object at a time.
class Interruption : public QObject
{
    Q_OBJECT

public:
    Interruption();
    ~Interruption() override;

Q_SIGNALS:
    void interrupted();
};
