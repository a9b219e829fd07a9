// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QHostAddress;
class QUrl;

/// Which addresses photos are fetched from.
namespace PhotoAddress {

/// Whether the host means the phone itself: a loopback address of IPv4 or IPv6 however it is spelled, the address
/// "any", which leads there as well, "localhost" or a name below it. Judged by what is written: names are not looked
/// up.
bool isLoopback(const QString &host);
/// The same of the address that a name has led to.
bool isLoopback(const QHostAddress &address);

/// Whether the scheme is http or https.
bool isWeb(const QUrl &url);

/// Whether a contact's photo is an address to download from: http or https, on a host that is not the phone itself.
bool isToDownload(const QString &photo);

} // namespace PhotoAddress
