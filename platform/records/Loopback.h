// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Which hosts are the phone itself.
namespace Loopback {

/// Whether the host is a loopback address of IPv4 or IPv6 however it is spelled, the address "any", which leads there
/// as well, "localhost" or a name below it. Judged by what is written: names are not looked up. Any thread.
bool isHost(const QString &host);

} // namespace Loopback
