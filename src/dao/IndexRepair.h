// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

class Connection;

/// Indexes hold nothing that the tables do not hold: a damaged one is made anew, where each statement that meets it
/// would fail for good.
namespace IndexRepair {

/// Whether the pages of all tables and indexes can be read and are where they belong. Reads the whole file. None when
/// that cannot be known now (logged).
std::optional<bool> isSound(Connection &connection);

/// Makes all indexes anew. False when a table is damaged as well, or it cannot be written (logged): all is as it was
/// then. Nothing may be reading, and no
/// transaction be going on. Pages of a damaged index may stay behind in the file, with nobody to use them.
[[nodiscard]] bool makeAnew(Connection &connection);

} // namespace IndexRepair
