// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QHash>
#include <QString>

/// Remembers which modules let a call run into its time limit, so that a batch of a thousand calls to a module that
/// hangs waits for it once and not a thousand times. A module is asked again when its pause is over.
class SilentPeers
{
public:
    bool isSilent(const QString &module) const;
    void note(const QString &module, const QDBusMessage &reply);

private:
    QHash<QString, QDeadlineTimer> m_pauses;
};
