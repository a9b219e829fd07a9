// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Interruption.h"

#include <QSocketNotifier>

#include <csignal>

#include <sys/eventfd.h>
#include <unistd.h>

namespace {

// The last is that of a terminal that goes.
constexpr int interruptingSignals[] = {SIGINT, SIGTERM, SIGHUP};

// A signal handler reaches nothing but statics.
int s_descriptor = -1;

void onSignal(int)
{
    eventfd_write(s_descriptor, 1);
}

} // namespace

Interruption::Interruption()
{
    s_descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    auto *notifier = new QSocketNotifier(s_descriptor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        eventfd_t count = 0;
        eventfd_read(s_descriptor, &count);
        Q_EMIT interrupted();
    });
    struct sigaction action
    {
    };
    action.sa_handler = onSignal;
    // A command that is stuck, reading from a terminal for example, ends at the second signal.
    action.sa_flags = SA_RESTART | int(SA_RESETHAND);
    for (const int signal : interruptingSignals)
        sigaction(signal, &action, nullptr);
}

Interruption::~Interruption()
{
    for (const int signal : interruptingSignals)
        std::signal(signal, SIG_DFL);
    close(s_descriptor);
}

#include "moc_Interruption.cpp"
