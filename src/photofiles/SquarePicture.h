// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// The form in which the phone shows pictures: a small square JPEG, neither progressive nor with a mark that says how
/// it is turned.
namespace SquarePicture {

/// Pixels of a photo's side.
constexpr int side = 100;

/// What the name of a picture in this form ends with: "_100x100".
QString suffix();

/// Whether it has this form, with this side. Its header says so: it is not decoded.
bool isSquareJpeg(const QByteArray &picture, int sidePixels = side);

} // namespace SquarePicture
