// SPDX-License-Identifier: Apache-2.0
#include "picture/Limits.h"
#include "picture/Square.h"

#include <QBuffer>
#include <QFile>
#include <QThreadPool>

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int maxSide = 1000;

constexpr char usage[] =
    R"(usage: kestin-picture SIDE [FILE] > SQUARE

Makes the centred square of a picture (JPEG, PNG, GIF, BMP; WebP where Qt's plugin for it is installed), SIDE
pixels wide, as JPEG. Without a file it reads standard input. Who starts it need not trust the picture: before a
byte of it is read the process gives up what it could do harm with; it is ended when it takes more than 5 s of
processor time or 128 MiB of memory.
Standard error tells the size of the picture, "300 x 200", or why there is no square.

Exit codes: 0 made, 1 not made, 2 the command line is wrong; or a signal.
)";

int fail(const QString &reason)
{
    std::fprintf(stderr, "%s\n", qPrintable(reason));
    return EXIT_FAILURE;
}

/// False when there is no such regular file; anything else, a pipe for one, could make it wait.
bool openRegular(QFile &file, const char *path)
{
    const int descriptor = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status = {};
    return descriptor >= 0 && fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
           file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
}

Square squareOf(QFile &file, int side)
{
    if (!file.isSequential())
        return Square::of(file, side);
    QBuffer buffer; // decoders go back
    buffer.setData(file.readAll());
    buffer.open(QIODevice::ReadOnly);
    return Square::of(buffer, side);
}

int answer(const Square &square)
{
    if (square.jpeg.isNull())
        return fail(square.trouble);
    if (std::fwrite(square.jpeg.constData(), 1, size_t(square.jpeg.size()), stdout) != size_t(square.jpeg.size()) ||
        std::fflush(stdout) != 0)
        return fail(QStringLiteral("the square cannot be written"));
    std::fprintf(stderr, "%d x %d\n", square.size.width(), square.size.height());
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0)
        return std::fputs(usage, stdout) >= 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    const int side = argc == 2 || argc == 3 ? std::atoi(argv[1]) : 0;
    if (side < 1 || side > maxSide) {
        std::fputs(usage, stderr);
        return 2;
    }
    if (!Limits::set())
        return fail(QStringLiteral("the limits cannot be set"));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {}); // of decoders, for nobody
    QThreadPool::globalInstance()->setMaxThreadCount(1); // the stack of each counts as memory
    QFile file;
    const bool isOpen = argc == 3 ? openRegular(file, argv[2]) : file.open(stdin, QIODevice::ReadOnly);
    return isOpen ? answer(squareOf(file, side)) : fail(QStringLiteral("it cannot be opened"));
}
