// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>

/// Request ids with a meaning of their own; any other is a caller's, echoed in the events.
namespace RequestId {
inline constexpr QLatin1String cached("CACHED_REQID"); ///< about a cached copy of a remote contact
inline constexpr QLatin1String deviceManagement("DM"); ///< about the contacts of device management; raises no events
} // namespace RequestId
