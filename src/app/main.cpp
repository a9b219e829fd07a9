// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/KestinApplication.h"
#include "platform/records/KestinBus.h"
#include "platform/records/KestinPaths.h"
#include "src/dbus/KestinDirectoryAdaptor.h"
#include "src/directory/KestinDirectory.h"

#include <QCommandLineParser>

#include <cstdio>
#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

/// False when it makes no sense, which was told.
bool parseCommandLine(const QCoreApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            R"(The contact directory of the phone: keeps contacts, knows who is calling, and answers on the message bus as
com.norlan.Kestin.KestinDirectory. Runs until SIGTERM or SIGINT.

Environment:
  KESTIN_BUS        system (default), session, or the address of a bus
  KESTIN_DATA_DIR   folder that takes the place of %1, where the database and the photos lie
  http_proxy        proxy through which photos are fetched; also https_proxy, no_proxy
  KESTIN_LOG_LEVEL  3 errors, 4 warnings too (default), 6 information too, 7 everything

Exit codes: 0 ended by a signal, 1 it could not start or lost the bus; the log on standard error says why.)")
            .arg(KestinPaths::defaultRoot()));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);
    if (!parser.positionalArguments().isEmpty())
        std::fputs("kestin-directory: no arguments are expected; see --help\n", stderr);
    return parser.positionalArguments().isEmpty();
}

/// A heap for each search worker would keep what a long list took once, and little is allocated at the same time. Large
/// blocks, such as the list itself, stay outside of it: the library would raise the size of these with each that is
/// freed.
void keepHeapSmall()
{
#ifdef __GLIBC__
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
#endif
}

} // namespace

int main(int argc, char **argv)
{
    keepHeapSmall();
    qputenv("QT_NO_GLIB", "1"); // Qt's own event loop wakes, and begins in a worker, with less
    KestinApplication application(argc, argv);
    QCoreApplication::setApplicationName(ModuleName::directory);
    QCoreApplication::setApplicationVersion(QStringLiteral(KESTIN_VERSION));
    if (!parseCommandLine(application))
        return EXIT_FAILURE;
    KestinDirectory *directory = KestinDirectory::instance();
    const int exitCode = application.exec<KestinDirectoryAdaptor>(*directory);
    delete KestinDirectory::instance();
    return exitCode;
}
