// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;

/// The form in which the phone shows pictures: a small square JPEG.
namespace SquarePicture {

/// Pixels of a photo's side.
constexpr int side = 100;

/// What the name of a picture in this form ends with: "_100x100".
QString suffix();

/// Whether it is in this form already.
bool isSquareJpeg(const QByteArray &picture);

/// The centred square of a picture, scaled to `sidePixels`, as JPEG; transparent parts are white, and it stands
/// upright. Null, after an error line with `name`, when there is no device, when this is no picture or one that does
/// not tell its size, or one above 50 megapixels, which is not even decoded.
QByteArray make(QIODevice *picture, const QString &name, int sidePixels);

} // namespace SquarePicture
