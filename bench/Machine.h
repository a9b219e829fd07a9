// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What the figures were measured on.
struct Machine
{
    /// `workDirectory` is the folder that held the data.
    static Machine describe(const QString &workDirectory);

    QString processor;
    int cores = 0;
    QString kernel;
    QString fileSystem; ///< of the work directory
    QString software;   ///< the libraries, and how the programs were built
};
