// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

/// What a person names as the source of a photo: an address from which the directory fetches it, or a file.
namespace PhotoSource {

/// Whether it is written as an address, "scheme://", and not as a path.
bool isAddress(const QString &source);

/// Why the directory will never fetch from the address, as far as that can be seen from it: another scheme than http
/// and https, no host, or a host that is the phone itself in any spelling. Names are not looked up.
std::optional<QString> refusalOf(const QString &address);

} // namespace PhotoSource
