// SPDX-License-Identifier: Apache-2.0
#include "src/photofiles/PictureRun.h"

#include "picture/PictureFormat.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"
#include "platform/records/RegularFile.h"
#include "src/photofiles/SquarePicture.h"

#include <QDir>
#include <QProcessEnvironment>

#include <sys/mman.h>

#include <utility>

namespace {

constexpr qsizetype maxAnswerBytes = 1 << 20;

/// Nothing of the bus, and no proxy with its password; what a sanitizer is told, it is told there too.
QProcessEnvironment environment()
{
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment(), some;
    for (const char *name : {"LD_LIBRARY_PATH", "QT_PLUGIN_PATH", "TSAN_OPTIONS"}) {
        if (all.contains(QLatin1String(name)))
            some.insert(QLatin1String(name), all.value(QLatin1String(name)));
    }
    // An empty one would mean that of this process.
    some.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    return some;
}

QByteArray headOf(const QString &path)
{
    QFile file(path);
    return RegularFile::open(file) ? QByteArray() : file.read(PictureFormat::headBytes);
}

} // namespace

PictureRun::PictureRun(const QString &program, std::chrono::milliseconds limit, const Picture &picture)
    : m_picture(picture)
    , m_limit(limit)
{
    m_process.setProgram(program);
    m_process.setArguments({QString::number(picture.side)});
    if (!picture.content) {
        m_process.setArguments(m_process.arguments() << picture.name);
        m_process.setStandardInputFile(QProcess::nullDevice());
    }
    m_process.setProcessEnvironment(environment());
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &PictureRun::runOut);
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &PictureRun::read);
    connect(&m_process, &QProcess::readyReadStandardError, this, &PictureRun::read);
    connect(&m_process, &QProcess::finished, this, &PictureRun::end);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end();
    });
}

PictureRun::~PictureRun()
{
    m_isEnded = true; // nobody wants to know any more
    m_process.kill();
    m_process.waitForFinished();
}

void PictureRun::start()
{
    m_trouble = whyNotToStart();
    if (m_trouble.isNull() && m_picture.content && !layOut())
        m_trouble = QStringLiteral("there is no memory to hand it over: %1").arg(qt_error_string());
    if (!m_trouble.isNull()) {
        end();
        return;
    }
    m_timer.start(m_limit);
    m_process.start(); // which opens the standard input itself, at its beginning
    m_content.close();
}

void PictureRun::run()
{
    start();
    if (!m_isEnded && !m_process.waitForFinished(int(m_limit.count())) && !m_isEnded) {
        runOut();
        m_process.waitForFinished();
    }
}

/// Puts the content where the program finds it as a file. A pipe would be filled by the event loop only, and who holds
/// that up would use up the program's time.
bool PictureRun::layOut()
{
    const QByteArray content = *std::exchange(m_picture.content, std::nullopt);
    const int descriptor = ::memfd_create("picture", MFD_CLOEXEC);
    if (descriptor < 0 ||
        !m_content.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        return false;
    m_process.setStandardInputFile(QStringLiteral("/proc/self/fd/%1").arg(descriptor));
    return m_content.write(content) == content.size();
}

/// A program for what is no picture would be wasted: an import can bring thousands of them.
QString PictureRun::whyNotToStart() const
{
    const auto &content = m_picture.content;
    if (!content && !QDir::isAbsolutePath(m_picture.name))
        return QStringLiteral("not an absolute path");
    if (PictureFormat::of(content ? *content : headOf(m_picture.name)).isNull())
        return QStringLiteral("neither JPEG, PNG, GIF, BMP nor WebP, or it cannot be read");
    return {};
}

void PictureRun::read()
{
    m_output += m_process.readAllStandardOutput();
    m_errors += m_process.readAllStandardError();
    if (m_output.size() + m_errors.size() > maxAnswerBytes)
        giveUp(QStringLiteral("the answer is too large"));
}

/// The program may have ended in time, and only nobody have looked.
void PictureRun::runOut()
{
    if (!m_process.waitForFinished(0) && !m_isEnded)
        giveUp(QStringLiteral("it takes too long"));
}

void PictureRun::giveUp(const QString &trouble)
{
    m_trouble = trouble;
    m_process.kill();
}

void PictureRun::end()
{
    if (m_isEnded)
        return;
    m_isEnded = true;
    m_timer.stop();
    if (m_trouble.isNull())
        judge();
    log();
    Q_EMIT ended();
}

void PictureRun::judge()
{
    read();
    if (m_process.error() == QProcess::FailedToStart)
        KestinLogger::error("The program for pictures cannot be started: %1: %2", m_process.program(),
                            m_process.errorString());
    else if (m_process.exitStatus() != QProcess::NormalExit)
        m_trouble = QStringLiteral("the program for pictures ended by signal %1").arg(m_process.exitCode());
    else if (m_process.exitCode() != 0)
        m_trouble = QString::fromUtf8(m_errors.left(200)).trimmed();
    else if (!SquarePicture::isSquareJpeg(m_output, m_picture.side))
        m_trouble = QStringLiteral("the program for pictures answers something else");
    else
        m_square = m_output;
}

void PictureRun::log() const
{
    const QList<QByteArray> size = m_square.isNull() ? QList<QByteArray>() : m_errors.split(' ');
    const int side = m_square.isNull() ? 0 : m_picture.side;
    const QString name = AddressText::withoutUserInfo(m_picture.name);
    if (m_square.isNull())
        KestinLogger::error("KestinDirectory::resizeAndCropToSquare, failed to load image: %1", name);
    else
        KestinLogger::debug("KestinDirectory::resizeAndCropToSquare, successfully loaded image: %1", name);
    if (!m_trouble.isEmpty())
        KestinLogger::warning("Picture %1 cannot be used: %2", name, m_trouble);
    KestinLogger::debug("KestinDirectory::resizeAndCropToSquare, size of image is: %1 x %2", size.value(0).toInt(),
                        size.value(2).toInt());
    KestinLogger::debug("KestinDirectory::resizeAndCropToSquare, about to write new image with size: %1 x %2", side,
                        side);
}

#include "moc_PictureRun.cpp"
