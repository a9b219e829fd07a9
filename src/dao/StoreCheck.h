// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QThread>

/// Reads the whole file once and tells whether it is damaged. Made and deleted on the main thread.
class StoreCheck : public QThread
{
    Q_OBJECT

Q_SIGNALS:
    /// From its own thread.
    void damageFound();

protected:
    void run() override;
};
