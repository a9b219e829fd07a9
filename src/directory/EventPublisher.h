// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/directory/DirectoryEvent.h"

class KestinModule;

/// The one place from which events of the directory go out.
class EventPublisher
{
public:
    explicit EventPublisher(KestinModule &module)
        : m_module(module)
    {
    }

    /// Sends the event and logs whether that worked; nobody has to act on the answer.
    bool publish(const DirectoryEvent &event);

private:
    bool publishBrief(const DirectoryEvent &event);

    KestinModule &m_module;
};
