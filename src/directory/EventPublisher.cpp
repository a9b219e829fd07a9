// SPDX-License-Identifier: Apache-2.0
#include "src/directory/EventPublisher.h"

#include "platform/framework/KestinLogger.h"
#include "platform/framework/KestinModule.h"

bool EventPublisher::publish(const DirectoryEvent &event)
{
    const bool sent = m_module.notifyEvent(event.event());
    if (sent)
        KestinLogger::debug("event %1 sent %2", event.event().getEvtName(), event.details());
    else
        KestinLogger::error("event %1 notification failed %2", event.event().getEvtName(), event.details());
    return sent;
}
