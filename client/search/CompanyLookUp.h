// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/EventWait.h"
#include "platform/records/Contact.h"

/// Asks the company directory for a contact, which stays there.
class CompanyLookUp : public QObject
{
    Q_OBJECT

public:
    explicit CompanyLookUp(const BusSession &bus);

    /// None when the company directory has no contact with the id. Call it a single time. Throws CommandFailure when
    /// the company directory is not there, says nothing within the limit, and when it is interrupted.
    std::optional<Contact> find(const QString &id);
    void interrupt() { m_wait.interrupt(); }

private:
    const BusSession &m_bus;
    EventWait m_wait;
};
