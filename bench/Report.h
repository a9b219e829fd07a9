// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/FigureTable.h"
#include "bench/Machine.h"

#include <QString>

/// The figures as text, for people (a table in Markdown) and for programs.
namespace Report {

QString markdown(const Machine &machine, const FigureTable &table);
QString json(const Machine &machine, const FigureTable &table);

} // namespace Report
