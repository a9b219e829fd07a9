// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QUrl;

/// Which addresses photos are fetched from.
namespace PhotoAddress {

/// Whether the scheme is http or https.
bool isWeb(const QUrl &url);

/// Whether a contact's photo is an address to download from: http or https, on a host that is not the phone itself.
bool isToDownload(const QString &photo);

} // namespace PhotoAddress
