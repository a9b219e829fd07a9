// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/BusSession.h"
#include "platform/records/EventArgument.h"

/// Raises a platform event in the place of a module. Throws CommandFailure when the bus does not take it.
void raiseEvent(const BusSession &bus, const QString &module, const QString &event, const ListEventArgument &arguments);
