// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/BusSession.h"
#include "platform/records/Setting.h"
#include "platform/records/UpdateReport.h"

/// The platform's settings manager. Every call throws what BusSession::call throws.
class SettingsService
{
public:
    explicit SettingsService(const BusSession &bus)
        : m_bus(bus)
    {
    }

    QString value(const QString &key) const;
    UpdateReport setValue(const QString &key, const QString &value) const;
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

    /// The form of a number that contacts are found by. It is the number itself when telephony is absent, silent or
    /// answers something else: the directory stores numbers unchanged then as well.
    QString canonicalNumber(const QString &number) const;

private:
    const BusSession &m_bus;
};
