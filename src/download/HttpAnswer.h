// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

/// The answer to a GET, read as it comes. Whatever a server sends, no more of it is held than the limits say: the
/// network library's own reader has none for what comes before the body.
class HttpAnswer
{
public:
    /// Status lines, headers, answers before the final answer, what stands around chunks and behind the last, all
    /// together.
    static constexpr qsizetype maxHeaderBytes = 64 * 1024;

    explicit HttpAnswer(qint64 maxBodyBytes);

    enum State {
        Reading,
        Complete,       ///< with the header already unless its status is 2xx: no other body is of interest
        Malformed,      ///< this is not HTTP/1
        HeaderTooLarge, ///< beyond maxHeaderBytes
        BodyTooLarge,   ///< or announced as such
        CutShort,       ///< the connection ended before the answer
    };
    /// Takes what came next; nothing is taken once it is no longer Reading.
    State take(QByteArrayView bytes);
    /// No more will come.
    State end();

    // Valid when Complete.

    int status() const { return m_status; }
    /// As it was sent; empty when the answer has none.
    const QByteArray &location() const { return m_location; }
    const QByteArray &body() const { return m_body; }

private:
    enum Stage { StatusLine, Header, ChunkHead, ChunkEnd, Trailer, SizedBody, Chunk, BodyUntilTheEnd };

    qsizetype takeLine(QByteArrayView bytes);
    qsizetype takeBody(QByteArrayView bytes);
    void readLine(QByteArrayView line);
    void readStatus(QByteArrayView line);
    void readHeader(QByteArrayView line);
    void readChunkHead(QByteArrayView line);
    void endHeader();
    void expect(Stage stage, qint64 bytes);

    qint64 m_maxBodyBytes;
    State m_state = Reading;
    Stage m_stage = StatusLine;
    QByteArray m_line; ///< what there is of the next
    qsizetype m_headerBytes = 0;
    int m_status = 0;
    std::optional<qint64> m_length; ///< as announced, if it was
    bool m_isChunked = false;
    QByteArray m_location;
    qint64 m_missing = 0; ///< of the body or the chunk
    QByteArray m_body;
};
