// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/BusSession.h"
#include "platform/records/Setting.h"
#include "platform/records/UpdateReport.h"

#include <optional>

/// The platform's settings manager. Every call throws what BusSession::call throws.
class SettingsService
{
public:
    explicit SettingsService(const BusSession &bus)
        : m_bus(bus)
    {
    }

    QString value(const QString &key) const;
    /// Empty when the settings manager knows no such setting.
    QString valueOrNothing(const QString &key) const;
    /// Throws CommandFailure when the settings manager refuses the value.
    void setValue(const QString &key, const QString &value) const;
    ListSetting all() const;

private:
    const BusSession &m_bus;
};

/// What the phone's telephony knows about numbers.
class TelephonyService
{
public:
    explicit TelephonyService(const BusSession &bus)
        : m_bus(bus)
    {
    }

    struct Canonical
    {
        QString number;
        std::optional<CommandFailure> fault; ///< why telephony could not be asked
    };

    /// The form of a number that contacts are found by. It is the number itself when telephony is absent, silent or
    /// answers something else: the directory stores numbers unchanged then as well.
    Canonical canonical(const QString &number) const;
    /// The form in which it is dialled; as for the canonical form.
    Canonical dialable(const QString &number) const;

private:
    Canonical form(const QString &method, const QString &number) const;

    const BusSession &m_bus;
};

/// The company directory, asked without the contact directory.
class CompanyService
{
public:
    explicit CompanyService(const BusSession &bus)
        : m_bus(bus)
    {
    }

    /// Why a search does not ask the company directory, when it is known that it does not: nobody is there, or the
    /// phone has no right to use it.
    std::optional<CommandFailure> fault() const;

    /// Throws CommandFailure when the web-service manager neither runs nor is started by a call.
    void requireReachable() const;
    /// Has it tell the contact by an event of the web-service manager that carries `requestId`.
    void askProfile(const QString &requestId, const QString &contactId) const;

private:
    const BusSession &m_bus;
};
