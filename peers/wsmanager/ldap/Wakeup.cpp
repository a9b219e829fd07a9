// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/ldap/Wakeup.h"

#include <poll.h>
#include <sys/eventfd.h>

Wakeup::Wakeup()
    : m_event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_isAwake(!m_event.isOpen()) // better no waiting at all than one that cannot be ended
{
}

void Wakeup::wake()
{
    m_isAwake = true;
    eventfd_write(m_event.number(), 1);
}

Wakeup::Event Wakeup::waitFor(int descriptor, int milliseconds) const
{
    pollfd watched[2]{{descriptor, POLLIN, 0}, {m_event.number(), POLLIN, 0}};
    const int count = poll(watched, 2, milliseconds);
    if (m_isAwake)
        return Event::Woken;
    // An interrupting signal counts as readable: the reader looks, finds nothing and waits again.
    return count == 0 ? Event::TimeOut : Event::Readable;
}
