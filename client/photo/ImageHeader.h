// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <optional>

/// What the first bytes of a picture tell. The picture itself is not decoded: that is the phone's business.
struct ImageHeader
{
    QByteArray format; ///< "JPEG", "PNG" or "GIF"
    int width = 0;     ///< pixels; 0 when the header is cut or damaged, and so for the height
    int height = 0;

    /// None when the bytes do not begin like a JPEG, PNG or GIF.
    static std::optional<ImageHeader> of(const QByteArray &bytes);
};
