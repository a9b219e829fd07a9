// SPDX-License-Identifier: Apache-2.0
#include "src/directory/EventPublisher.h"

#include "platform/framework/KestinLogger.h"
#include "platform/framework/KestinModule.h"

bool EventPublisher::publish(const DirectoryEvent &event)
{
    const QString name = event.event().getEvtName();
    bool sent = m_module.notifyEvent(event.event());
    if (const auto brief = sent ? std::nullopt : event.withoutSummaries()) {
        KestinLogger::warning("event %1 is sent without its summaries: they are more than the bus carries", name);
        sent = m_module.notifyEvent(*brief);
    }
    const KestinLogger::Level level = sent ? KestinLogger::Debug : KestinLogger::Error;
    if (const auto &details = event.details())
        KestinLogger::log(level, sent ? "event %1 sent %2\n%3" : "event %1 notification failed %2\n%3", name,
                          details->status, details->cause);
    else
        KestinLogger::log(level, sent ? "event %1 sent " : "event %1 notification failed ", name);
    return sent;
}
