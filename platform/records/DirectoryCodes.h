// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>

/// What the directory's operations answer. The same number means another thing in another call.
namespace ResultCode {
inline constexpr int done = 0;
inline constexpr int wrongType = 1;     ///< the operation may not touch contacts of this type
inline constexpr int noSuchContact = 2; ///< modify, delete: no contact has the id
inline constexpr int capacityReached = 3;
inline constexpr int nothingToDo = 4; ///< preview: already so
inline constexpr int readOnly = 6;
inline constexpr int anonymous = -1;   ///< create, modify: an anonymous contact is refused
inline constexpr int notFound = -1;    ///< preview: no contact has the id
inline constexpr int writeFailed = -1; ///< the database refused; the log says why
inline constexpr int withdrawn = -1;   ///< the method does nothing any more
} // namespace ResultCode

/// Request ids with a meaning of their own; any other is a caller's, echoed in the events.
namespace RequestId {
inline constexpr QLatin1String cached("CACHED_REQID"); ///< about a cached copy of a remote contact
inline constexpr QLatin1String deviceManagement("DM"); ///< about the contacts of device management; raises no events
inline constexpr QLatin1String importDeletion("pcSyncDeleteContactReqId"); ///< in events only: removed by an import
} // namespace RequestId
