// SPDX-License-Identifier: Apache-2.0
#include "src/photofiles/PictureProgram.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

QString PictureProgram::path()
{
    const QString beside = QCoreApplication::applicationDirPath() + QLatin1String("/kestin-picture");
    return QFileInfo::exists(beside) ? beside : QStringLiteral(KESTIN_PICTURE_PROGRAM);
}

PictureProgram::PictureProgram(const QString &program, std::chrono::milliseconds limit)
    : m_program(program)
    , m_limit(limit)
{
}

PictureProgram::~PictureProgram() = default;

QByteArray PictureProgram::squareOf(const Picture &picture) const
{
    PictureRun run(m_program, m_limit, picture);
    run.run();
    return run.square();
}

quint32 PictureProgram::ask(const Picture &picture)
{
    if (++m_lastRequest == 0)
        ++m_lastRequest;
    m_requests.emplace_back(m_lastRequest, picture);
    QMetaObject::invokeMethod(this, &PictureProgram::startNext, Qt::QueuedConnection);
    return m_lastRequest;
}

void PictureProgram::drop(quint32 request)
{
    const auto isIt = [request](const auto &entry) { return entry.first == request; };
    const auto position = std::find_if(m_requests.begin(), m_requests.end(), isIt);
    if (position == m_requests.end())
        return;
    if (position == m_requests.begin() && m_run) {
        m_run.reset();
        QMetaObject::invokeMethod(this, &PictureProgram::startNext, Qt::QueuedConnection);
    }
    m_requests.erase(position);
}

void PictureProgram::startNext()
{
    if (m_run || m_requests.empty())
        return;
    m_run = std::make_unique<PictureRun>(m_program, m_limit, std::exchange(m_requests.front().second, {}));
    connect(m_run.get(), &PictureRun::ended, this, &PictureProgram::ended);
    m_run->start();
}

void PictureProgram::ended()
{
    PictureRun *run = m_run.release();
    run->setParent(this);
    run->deleteLater(); // it is still telling of its end
    const quint32 request = m_requests.front().first;
    m_requests.pop_front();
    QMetaObject::invokeMethod(this, &PictureProgram::startNext, Qt::QueuedConnection);
    Q_EMIT answered(request, run->square());
}

#include "moc_PictureProgram.cpp"
