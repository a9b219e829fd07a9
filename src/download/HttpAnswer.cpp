// SPDX-License-Identifier: Apache-2.0
#include "src/download/HttpAnswer.h"

#include <algorithm>
#include <utility>

HttpAnswer::HttpAnswer(qint64 maxBodyBytes)
    : m_maxBodyBytes(maxBodyBytes)
{
}

HttpAnswer::State HttpAnswer::take(QByteArrayView bytes)
{
    while (m_state == Reading && !bytes.isEmpty())
        bytes = bytes.sliced(m_stage >= SizedBody ? takeBody(bytes) : takeLine(bytes));
    return m_state;
}

HttpAnswer::State HttpAnswer::end()
{
    if (m_state == Reading)
        m_state = m_stage == BodyUntilTheEnd ? Complete : CutShort;
    return m_state;
}

qsizetype HttpAnswer::takeLine(QByteArrayView bytes)
{
    const qsizetype end = bytes.indexOf('\n');
    const qsizetype size = end < 0 ? bytes.size() : end + 1;
    m_headerBytes += size;
    if (m_headerBytes > maxHeaderBytes) {
        m_state = HeaderTooLarge;
        return size;
    }
    m_line.append(bytes.first(size));
    if (end >= 0) {
        QByteArray line = std::exchange(m_line, {});
        const qsizetype ending = line.endsWith("\r\n") ? 2 : 1;
        if (m_stage == ChunkHead || m_stage == ChunkEnd)
            m_headerBytes -= ending; // what cannot be left out is free, or small chunks would use the room up
        line.chop(ending);
        readLine(line);
    }
    return size;
}

qsizetype HttpAnswer::takeBody(QByteArrayView bytes)
{
    const bool isEndless = m_stage == BodyUntilTheEnd;
    const qsizetype size = isEndless ? bytes.size() : std::min(m_missing, qint64(bytes.size()));
    if (m_body.size() + size > m_maxBodyBytes) {
        m_state = BodyTooLarge;
        return size;
    }
    m_body.append(bytes.first(size));
    m_missing -= isEndless ? 0 : size;
    if (m_missing == 0 && m_stage == SizedBody)
        m_state = Complete;
    else if (m_missing == 0 && m_stage == Chunk)
        m_stage = ChunkEnd;
    return size;
}

void HttpAnswer::readLine(QByteArrayView line)
{
    switch (m_stage) {
    case StatusLine:
        readStatus(line);
        break;
    case Header:
        line.isEmpty() ? endHeader() : readHeader(line);
        break;
    case ChunkHead:
        readChunkHead(line);
        break;
    case ChunkEnd:
        m_stage = ChunkHead;
        m_state = line.isEmpty() ? m_state : Malformed;
        break;
    default:
        m_state = line.isEmpty() ? Complete : m_state;
    }
}

void HttpAnswer::readStatus(QByteArrayView line)
{
    constexpr QByteArrayView version("HTTP/1.");
    if (line.isEmpty())
        return;
    m_status = line.startsWith(version) ? line.toByteArray().mid(version.size() + 2, 3).toInt() : 0;
    m_stage = Header;
    if (m_status < 100 || m_status > 999)
        m_state = Malformed;
}

void HttpAnswer::readHeader(QByteArrayView line)
{
    const qsizetype colon = line.indexOf(':');
    const QByteArray name = line.first(std::max(colon, qsizetype(0))).toByteArray().toLower();
    const QByteArray value = line.sliced(colon + 1).trimmed().toByteArray();
    bool isGood = true;
    if (name == "content-length") {
        const qint64 length = value.toLongLong(&isGood);
        isGood = isGood && length >= 0 && (!m_length || m_length == length);
        m_length = length;
    } else if (name == "transfer-encoding") {
        m_isChunked = true;
        isGood = value.compare("chunked", Qt::CaseInsensitive) == 0; // nothing else was asked for
    } else if (name == "location") {
        m_location = value;
    }
    m_state = isGood ? m_state : Malformed;
}

void HttpAnswer::endHeader()
{
    constexpr int noContent = 204;
    if (m_status < 200) { // the final answer is still to come
        m_stage = StatusLine;
        m_length.reset();
        m_isChunked = false;
        m_location.clear();
    } else if (m_status >= 300 || m_status == noContent) {
        m_state = Complete;
    } else if (m_isChunked) {
        m_stage = ChunkHead;
    } else if (m_length) {
        expect(SizedBody, *m_length);
    } else {
        m_stage = BodyUntilTheEnd;
    }
}

void HttpAnswer::readChunkHead(QByteArrayView line)
{
    const qsizetype extension = line.indexOf(';');
    const QByteArrayView digits = line.first(extension < 0 ? line.size() : extension).trimmed();
    bool isGood = false;
    const qint64 size = digits.toLongLong(&isGood, 16);
    m_headerBytes -= digits.size(); // free as well
    if (!isGood || size < 0)
        m_state = Malformed;
    else if (size == 0)
        m_stage = Trailer;
    else
        expect(Chunk, size);
}

void HttpAnswer::expect(Stage stage, qint64 bytes)
{
    m_stage = stage;
    m_missing = bytes;
    if (bytes > m_maxBodyBytes - m_body.size())
        m_state = BodyTooLarge;
    else if (bytes == 0)
        m_state = Complete;
}
