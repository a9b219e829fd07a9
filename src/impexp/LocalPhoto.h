// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/fields/PhotoRules.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// The image that the photo field of a contact names on this phone.
namespace LocalPhoto {

constexpr qint64 maxBytes = PhotoRules::maxBytes;

/// False for no photo and for a photo on the web.
bool isLocal(const QString &photo);

/// Nothing when it cannot be read, is no regular file or larger than maxBytes.
std::optional<QByteArray> read(const QString &photo);

} // namespace LocalPhoto
