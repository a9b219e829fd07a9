// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What the operations on single contacts answer.
namespace ResultCode {
constexpr int done = 0;
constexpr int wrongType = 1;     ///< the operation may not touch contacts of this type
constexpr int noSuchContact = 2; ///< modify, delete
constexpr int capacityReached = 3;
constexpr int nothingToDo = 4; ///< preview: already so
constexpr int readOnly = 6;
constexpr int anonymous = -1;   ///< create, modify: an anonymous contact is refused
constexpr int notFound = -1;    ///< preview
constexpr int writeFailed = -1; ///< the database refused; the log says why
} // namespace ResultCode
