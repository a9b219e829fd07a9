// SPDX-License-Identifier: Apache-2.0
#pragma once

class Connection;

/// Statements find a contact by its id, so two rows of one id are changed and deleted together. Stores of before may
/// hold such.
namespace DoubledIds {

/// Deletes the cached copies that have the id of a contact of another type, and of several copies of one id all but
/// the newest. The misc pairs of the id stay. One write, none when there is nothing to delete; looks at cached copies
/// only. False when it failed (logged): all is as it was.
bool removeCopies(Connection &connection);

} // namespace DoubledIds
