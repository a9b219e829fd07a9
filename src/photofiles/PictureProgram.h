// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/photofiles/PictureRun.h"

#include <QByteArray>
#include <QObject>

#include <chrono>
#include <deque>
#include <memory>
#include <utility>

/// Has pictures from strangers made square by a program of their own, kestin-picture: what crashes it, makes it run for
/// more than 5 s or take more memory than it may is a picture that cannot be used.
class PictureProgram : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds longest = std::chrono::seconds(5);

    /// Where it is: beside this program, else where the installation puts it.
    static QString path();

    explicit PictureProgram(const QString &program = path(), std::chrono::milliseconds limit = longest);
    ~PictureProgram() override;

    std::chrono::milliseconds limit() const { return m_limit; }

    /// Waits for the square of a picture, `limit` at most. Null when it cannot be used (logged).
    QByteArray squareOf(const Picture &picture) const;

    /// Asks for the square of a picture without waiting; the number of the request, never 0. One program runs at a
    /// time, the others wait: each may take much memory.
    quint32 ask(const Picture &picture);

    /// The answer to this request is not wanted any more and does not come. Without effect for a request that is
    /// answered.
    void drop(quint32 request);

Q_SIGNALS:
    /// Never from within `ask`. The square is null when the picture cannot be used (logged).
    void answered(quint32 request, const QByteArray &square);

private:
    void startNext();
    void ended();

    QString m_program;
    std::chrono::milliseconds m_limit;
    std::deque<std::pair<quint32, Picture>> m_requests; ///< the first runs if any does
    std::unique_ptr<PictureRun> m_run;
    quint32 m_lastRequest = 0;
};
