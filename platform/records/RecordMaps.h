// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// On the bus: a{ss}.
using QMapQStringQString = QMap<QString, QString>;
/// On the bus: a{sas}.
using QMapQStringQStringList = QMap<QString, QStringList>;

/// Registers both maps with the meta-type system and the bus.
void registerDBusQMapQStringQStringList();
