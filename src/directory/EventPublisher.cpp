// SPDX-License-Identifier: Apache-2.0
#include "src/directory/EventPublisher.h"

#include "platform/framework/KestinLogger.h"
#include "platform/framework/KestinModule.h"

bool EventPublisher::publishBrief(const DirectoryEvent &event)
{
    for (const DirectoryEvent::Brief &brief : event.briefs()) {
        if (!m_module.notifyEvent(brief.event))
            continue;
        KestinLogger::warning("event %1 is sent %2: all of it is more than the bus carries", brief.event.getEvtName(),
                              brief.with);
        return true;
    }
    return false;
}

bool EventPublisher::publish(const DirectoryEvent &event)
{
    const QString name = event.event().getEvtName();
    const bool sent = m_module.notifyEvent(event.event()) || publishBrief(event);
    const KestinLogger::Level level = sent ? KestinLogger::Debug : KestinLogger::Error;
    if (const auto &details = event.details())
        KestinLogger::log(level, sent ? "event %1 sent %2\n%3" : "event %1 notification failed %2\n%3", name,
                          details->status, details->cause);
    else
        KestinLogger::log(level, sent ? "event %1 sent " : "event %1 notification failed ", name);
    return sent;
}
