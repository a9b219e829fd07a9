// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/ModuleLife.h"

#include <QCoreApplication>

/// The process of a module without a user interface.
class KestinApplication : public QCoreApplication
{
    Q_OBJECT

public:
    KestinApplication(int &argc, char **argv)
        : QCoreApplication(argc, argv)
    {
    }

    /// As ModuleLife::exec.
    template <typename Adaptor, typename Module>
    int exec(Module &module)
    {
        return m_life.exec<Adaptor>(module);
    }

private:
    ModuleLife m_life;
};
