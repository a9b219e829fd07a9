// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArrayView>

/// Goes through the segments of a JPEG file, one after the other; the compressed data between them is passed over.
/// Whatever the bytes are, it reads none beyond them and comes to an end.
class JpegSegments
{
public:
    static constexpr uchar baselineFrame = 0xc0; ///< its content: precision, height, width, …
    static constexpr uchar scan = 0xda;
    static constexpr uchar application1 = 0xe1;

    /// `jpeg` must outlive this.
    explicit JpegSegments(QByteArrayView jpeg)
        : m_jpeg(jpeg)
    {
    }

    /// Goes to the next segment. False at the end of the picture, and where it breaks off.
    bool next();

    uchar marker() const { return m_marker; }
    QByteArrayView content() const { return m_content; }

private:
    QByteArrayView m_jpeg;
    QByteArrayView m_content;
    qsizetype m_position = 2; ///< behind the mark of the file's begin
    uchar m_marker = 0;
};
