// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QHash>
#include <QString>

/// Remembers which modules let a call run into its time limit, so that a batch of a thousand calls to a module that
/// hangs waits for it once and not a thousand times. A module is asked again when its pause is over or when its name
/// has another owner: it has been started anew, or it is gone, which is an answer at once.
class SilentPeers
{
public:
    /// Whether the module is in its pause. Only then does its owner matter.
    bool isPaused(const QString &module) const;
    /// Whether it is, and still the one that was silent.
    bool isSilent(const QString &module, const QString &owner) const;

    void add(const QString &module, const QString &owner);
    void remove(const QString &module) { m_pauses.remove(module); }

    /// Whether the reply means that nobody answered in time.
    static bool isSilence(const QDBusMessage &reply);

private:
    struct Pause
    {
        QDeadlineTimer end;
        QString owner;
    };

    QHash<QString, Pause> m_pauses;
};
