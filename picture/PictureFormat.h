// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// The formats in which pictures are taken: JPEG, PNG, GIF, BMP, WebP. What a picture calls itself counts for nothing,
/// its first bytes do.
namespace PictureFormat {

/// So many bytes are enough to know it.
constexpr int headBytes = 12;

/// The name that Qt has for the format of a picture that begins so; null when it is none of them.
QByteArray of(const QByteArray &head);

} // namespace PictureFormat
