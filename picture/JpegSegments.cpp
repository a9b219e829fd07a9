// SPDX-License-Identifier: Apache-2.0
#include "picture/JpegSegments.h"

namespace {

constexpr uchar endOfImage = 0xd9;

/// Neither a byte of compressed data, nor one that only fills, nor a restart within such data.
bool beginsSegment(uchar marker)
{
    return marker != 0 && marker != 0xff && (marker < 0xd0 || marker > 0xd7);
}

} // namespace

bool JpegSegments::next()
{
    const auto byteAt = [this](qsizetype position) { return uchar(m_jpeg[position]); };
    qsizetype mark = m_jpeg.indexOf('\xff', m_position);
    while (mark >= 0 && mark + 1 < m_jpeg.size() && !beginsSegment(byteAt(mark + 1)))
        mark = m_jpeg.indexOf('\xff', mark + 1);
    if (mark < 0 || mark + 3 >= m_jpeg.size() || byteAt(mark + 1) == endOfImage)
        return false;
    const qsizetype length = byteAt(mark + 2) << 8 | byteAt(mark + 3); // with its own two bytes
    if (length < 2 || length > m_jpeg.size() - mark - 2)
        return false;
    m_marker = byteAt(mark + 1);
    m_content = m_jpeg.sliced(mark + 4, length - 2);
    m_position = mark + 2 + length;
    return true;
}
