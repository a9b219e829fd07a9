// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/ProcessSignals.h"

#include <QSocketNotifier>

#include <csignal>

#include <sys/signalfd.h>
#include <unistd.h>

namespace {

sigset_t signalsOf(ProcessSignals::Kind kind)
{
    sigset_t set;
    sigemptyset(&set);
    if (kind == ProcessSignals::Kind::Reload) {
        sigaddset(&set, SIGHUP);
    } else {
        sigaddset(&set, SIGTERM);
        sigaddset(&set, SIGINT);
    }
    return set;
}

} // namespace

ProcessSignals::ProcessSignals(Kind kind)
{
    // Blocked here, before any thread is started, they are blocked in every thread and come through the descriptor.
    block(kind);
    const sigset_t set = signalsOf(kind);
    std::signal(SIGPIPE, SIG_IGN);
    m_descriptor = OwnedDescriptor(signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
    auto *notifier = new QSocketNotifier(m_descriptor.number(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, kind] {
        signalfd_siginfo info;
        while (read(m_descriptor.number(), &info, sizeof info) == ssize_t(sizeof info)) {
            if (kind == Kind::Reload)
                Q_EMIT reloadRequested();
            else
                Q_EMIT terminationRequested();
        }
    });
}

void ProcessSignals::block(Kind kind)
{
    const sigset_t set = signalsOf(kind);
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

#include "moc_ProcessSignals.cpp"
