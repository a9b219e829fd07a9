// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/FigureTable.h"

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

/// The figures as text, for people (a table in Markdown) and for programs.
namespace Report {

QString markdown(const Machine &machine, const FigureTable &table);
QString json(const Machine &machine, const FigureTable &table);

} // namespace Report
