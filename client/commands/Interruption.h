// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

/// Turns Ctrl-C and SIGTERM into a signal of the event loop while the object lives, so that a command can end in order.
/// The second Ctrl-C ends the program at once. Only a single object may live at a time.
class Interruption : public QObject
{
    Q_OBJECT

public:
    Interruption();
    ~Interruption() override;

Q_SIGNALS:
    void interrupted();
};
