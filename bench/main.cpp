// SPDX-License-Identifier: Apache-2.0
#include "bench/Bench.h"
#include "bench/BenchError.h"
#include "bench/Options.h"
#include "bench/Report.h"
#include "platform/records/Contact.h"
#include "platform/records/EventArgument.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/UpdateReport.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kestin-bench"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KESTIN_VERSION));
    const Options options = Options::fromCommandLine();
    registerDBusContact();
    registerDBusContactSummary();
    registerDBusEventArgument();
    registerDBusQMapQStringQStringList();
    registerDBusUpdateReport();

    Bench bench(options);
    try {
        bench.run();
    } catch (const BenchError &error) {
        std::fprintf(stderr, "kestin-bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
    const Machine machine = Machine::describe(options.workDirectory);
    const QString report =
        options.json ? Report::json(machine, bench.table()) : Report::markdown(machine, bench.table());
    std::fputs(report.toUtf8().constData(), stdout);
    return EXIT_SUCCESS;
}
