// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What this process may use from now on, whatever a picture makes the libraries do.
namespace Limits {

constexpr int processorSeconds = 5;
/// Memory to be written, the libraries' own included; nothing of it is a file. A sanitizer needs more for itself, so a
/// build with one has no such limit.
constexpr long memoryMiB = 128;
constexpr int openFiles = 16;
constexpr long outputMiB = 1;

/// Sets them, for good; takes the right to gain others from programs started, and ends the process when its parent
/// ends. False when one cannot be set.
[[nodiscard]] bool set();

} // namespace Limits
