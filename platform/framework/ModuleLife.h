// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/ErrorReplying.h"
#include "platform/framework/ProcessSignals.h"

#include <QCoreApplication>

#include <functional>
#include <memory>
#include <optional>

class BusTransport;
class KestinModule;

/// Leads a module through its life in a process that has a Qt application, whichever kind. Messages of the Qt libraries
/// go to the platform's log. One to a process, made before its first thread or
/// after ProcessSignals::block.
class ModuleLife : public QObject
{
    Q_OBJECT

public:
    using Loop = int (*)();

    /// `loop` is how the application runs its events.
    explicit ModuleLife(Loop loop = &QCoreApplication::exec);
    ~ModuleLife() override;

    /// Runs the event loop with the module in it. First come a look at its name, check (deploy when check says no),
    /// init and run. Then its bus methods get their Adaptor (ErrorReplying, a child of the module), the object is
    /// registered, and the name is claimed last. The service manager is told that the module is ready. SIGTERM and
    /// SIGINT end the loop, and the result is 0. A hook that fails, a bus that cannot be reached or goes away, or a
    /// name that is taken: the log has an error line, and the result is 1.
    template <typename Adaptor, typename Module>
    int exec(Module &module)
    {
        return lead(module, [&module] { new ErrorReplying<Adaptor>(module); });
    }

private:
    using MakeAdaptor = std::function<void()>;

    int lead(KestinModule &module, const MakeAdaptor &makeAdaptor);
    std::optional<QString> start(KestinModule &module, const MakeAdaptor &makeAdaptor);

    Loop m_loop;
    ProcessSignals m_signals;
    std::unique_ptr<BusTransport> m_transport;
};
