// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/EventWait.h"

#include <optional>

/// Copies a contact of the company directory to the phone.
class ContactCopy : public QObject
{
    Q_OBJECT

public:
    explicit ContactCopy(const BusSession &bus);

    /// The id of the new contact. Throws CommandFailure when the directory refuses or says nothing, when the company
    /// directory does not know the contact, and when it is interrupted.
    QString copy(const QString &id);
    void interrupt() { m_wait.interrupt(); }

private:
    bool take(const QString &id, const QString &eventName, const ListEventArgument &arguments);

    const BusSession &m_bus;
    EventWait m_wait;
    QString m_newId;
    std::optional<QString> m_refusal;
};
