// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

class Connection;

/// Indexes hold nothing that the tables do not hold: a damaged one is made anew, where each statement that meets it
/// would fail for good.
namespace IndexRepair {

/// Whether the pages of all tables and indexes can be read and are where they belong. Reads the whole file. None when
/// that cannot be known now (logged), or the reading is interrupted.
std::optional<bool> isSound(Connection &connection);
/// Whether the indexes hold just what the tables hold as well, which takes some five times as long: an index that is
/// out of date looks whole, and finds nobody.
std::optional<bool> isConsistent(Connection &connection);

enum class Outcome {
    Done,
    Damaged, ///< not only the indexes are
    NotNow,  ///< the file cannot be written: locked, a full disk
};
/// Makes all indexes anew in one write. When it is not done (logged), all is as it was. Nothing may be reading, and no
/// transaction be going on. Pages of a damaged index may stay behind in the file, with nobody to use them.
[[nodiscard]] Outcome makeAnew(Connection &connection);

} // namespace IndexRepair
