// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

class QIODevice;

/// A picture made square.
struct Square
{
    QByteArray jpeg; ///< null when there is none
    QSize size;      ///< of the picture that it was made of, upright
    QString trouble; ///< why there is none

    /// The centred square of a picture, scaled to `sidePixels`, as JPEG; transparent parts are white, and it stands
    /// upright. The device can go back to its begin. A picture above 50 megapixels, of unknown size or with too many
    /// scans is not even decoded.
    static Square of(QIODevice &picture, int sidePixels);
};
