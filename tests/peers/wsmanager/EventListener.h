// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinEvent.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QDBusConnection>
#include <QTest>

#include <optional>

/// Hears the events of one module and keeps them until they are taken.
class EventListener : public QObject
{
    Q_OBJECT

public:
    EventListener(QDBusConnection connection, const QString &module)
    {
        registerDBusEventArgument();
        connection.connect(QString(), KestinBus::objectPath(module), QLatin1String(KestinBus::eventInterface),
                           QLatin1String(KestinBus::eventSignal), this, SLOT(take(QString, ListEventArgument)));
    }

    /// The first event of this name with this request id (none: "") that has not been taken, waiting for it.
    std::optional<KestinEvent> next(const QString &name, const QString &reqId = {}, int limitMs = 20000)
    {
        std::optional<KestinEvent> found;
        (void)QTest::qWaitFor([&] { return (found = find(name, reqId)).has_value(); }, limitMs);
        return found;
    }

    void clear() { m_events.clear(); }

private Q_SLOTS:
    void take(const QString &name, const ListEventArgument &arguments) { m_events.append({name, arguments}); }

private:
    std::optional<KestinEvent> find(const QString &name, const QString &reqId)
    {
        for (qsizetype i = 0; i < m_events.size(); ++i) {
            if (m_events[i].getEvtName() == name && m_events[i].argument<QString>(ArgumentName::reqId) == reqId)
                return m_events.takeAt(i);
        }
        return std::nullopt;
    }

    QList<KestinEvent> m_events;
};
