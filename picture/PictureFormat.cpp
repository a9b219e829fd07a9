// SPDX-License-Identifier: Apache-2.0
#include "picture/PictureFormat.h"

QByteArray PictureFormat::of(const QByteArray &head)
{
    if (head.startsWith("\xff\xd8\xff"))
        return QByteArrayLiteral("jpeg");
    if (head.startsWith("\x89PNG\r\n\x1a\n"))
        return QByteArrayLiteral("png");
    if (head.startsWith("GIF87a") || head.startsWith("GIF89a"))
        return QByteArrayLiteral("gif");
    if (head.startsWith("BM"))
        return QByteArrayLiteral("bmp");
    if (head.startsWith("RIFF") && head.mid(8, 4) == "WEBP")
        return QByteArrayLiteral("webp");
    return {};
}
