// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/EventArgument.h"

#include <QJsonObject>
#include <QStringList>

/// Platform events as people and scripts read them. The arguments may have come over the bus: the directory's records
/// are recognised by their signature, a value of another kind is named by its signature only.
namespace EventText {

/// "name=value" of every argument, not escaped; of a list of contacts the first few and how many more there are. When
/// only photos have changed, "photo=…" of each contact too.
QStringList arguments(const ListEventArgument &arguments);

/// One key an argument, records as RecordJson writes them.
QJsonObject json(const ListEventArgument &arguments);

} // namespace EventText
