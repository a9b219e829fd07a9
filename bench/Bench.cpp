// SPDX-License-Identifier: Apache-2.0
#include "bench/Bench.h"

#include "bench/BenchError.h"
#include "bench/CreateRun.h"
#include "bench/FlashRun.h"
#include "bench/LookUpRun.h"
#include "bench/MadeUpContacts.h"
#include "bench/PhotoRun.h"
#include "bench/RemoteRun.h"
#include "bench/Rounds.h"
#include "bench/ScreenRun.h"
#include "bench/SearchRun.h"
#include "bench/ServiceProcess.h"
#include "bench/Stand.h"
#include "bench/SyncRun.h"
#include "platform/records/RecordMaps.h"

#include <QFile>

#include <algorithm>
#include <cstdio>

Bench::Bench(const Options &options)
    : m_options(options)
{
}

void Bench::run()
{
    for (const int size : m_options.sizes)
        measure(size);
}

void Bench::begin(int size, const char *task)
{
    m_progress.begin(QStringLiteral("%1 contacts: %2").arg(size).arg(QLatin1String(task)));
}

void Bench::measure(int size)
{
    // The single creates bring the store to its size, so that all that follows is measured at exactly this size.
    const int creates =
        m_options.wants(QStringLiteral("creates")) ? std::min(m_options.creates, size / 2 - CreateRun::warmUp) : 0;
    begin(size, "starting");
    Stand stand(m_options.workDirectory, size);
    stand.directory().start();
    fill(stand, creates > 0 ? size - creates - CreateRun::warmUp : size, size);
    begin(size, "second start");
    stand.directory().stop();
    const qint64 firstStart = stand.directory().start(); // gives the contacts their latin names
    m_table.put(size, Figure::FirstStart, {double(firstStart) / 1e6, {}});
    if (creates > 0)
        measureCreates(stand, creates, size);
    measureStarts(stand.directory(), size);
    putMemory(stand.directory(), size, Figure::ResidentAfterStart, Figure::AnonymousAfterStart,
              Figure::ProportionalAfterStart);
    measureCalls(stand, size);
    putMemory(stand.directory(), size, Figure::ResidentAtEnd, Figure::AnonymousAtEnd, Figure::ProportionalAtEnd);
    measureSync(stand, size);
    stand.directory().stop();
    if (m_options.wants(QStringLiteral("remote")))
        measureRemote(stand, size);
}

void Bench::measureSync(Stand &stand, int size)
{
    // No phone has more, and an import of them would take minutes.
    constexpr int most = 10000;
    if (m_options.wants(QStringLiteral("sync")) && size <= most) {
        begin(size, "imports and exports");
        SyncRun(stand, size).measure(m_table, m_progress);
    }
    if (m_options.wants(QStringLiteral("flash"))) {
        begin(size, "writes to the disk");
        FlashRun(stand, size).measure(m_table);
    }
    if (m_options.wants(QStringLiteral("photos"))) {
        begin(size, "photos");
        PhotoRun(stand, size).measure(m_table);
    }
}

void Bench::measureCalls(Stand &stand, int size)
{
    if (m_options.wants(QStringLiteral("lookups"))) {
        begin(size, "look-ups");
        LookUpRun(stand.client(), size).measure(m_options.calls, m_table, m_progress);
    }
    if (m_options.wants(QStringLiteral("searches"))) {
        begin(size, "searches");
        SearchRun(stand, size).measure(m_options.searches, m_table, m_progress);
    }
    if (m_options.wants(QStringLiteral("screen"))) {
        begin(size, "screen");
        if (ScreenRun::isPossible())
            ScreenRun(stand, size).measure(m_options.searches, m_table, m_progress);
        else
            std::fputs("kestin-bench: there is no kestin-presentation, so no screen is measured\n", stderr);
    }
}

void Bench::measureRemote(Stand &stand, int size)
{
    begin(size, "remote searches");
    if (!RemoteRun::isPossible()) {
        std::fputs("kestin-bench: there is no kestin-wsmanager, so no remote search is measured\n", stderr);
        return;
    }
    RemoteRun remote(stand); // the directory asks at its start whether there is a company directory
    stand.directory().start();
    const int searches = std::max(1, m_options.searches / 10);
    remote.measure(searches, size, m_table, m_progress);
    stand.directory().stop();
    stand.set(QStringLiteral("DirSearchMode"), QStringLiteral("2")); // results are told packet by packet
    stand.directory().start();
    remote.measurePackets(searches, size, m_table);
    stand.directory().stop();
}

void Bench::fill(Stand &stand, int count, int size)
{
    constexpr int last = 2000; // are measured, when nearly all are stored
    begin(size, "filling");
    qint64 nanoseconds = 0;
    int measured = 0;
    for (int done = 0; done < count;) {
        ListContact batch;
        for (const int end = std::min(count, done + m_options.batch); done < end; ++done)
            batch.append(MadeUpContacts::contact(done));
        const auto answer = stand.client().callDirectory(QStringLiteral("createLocalContacts"),
                                                         {QStringLiteral("bench"), QVariant::fromValue(batch)});
        if (answer.value<QMapQStringQString>().size() != batch.size())
            throw BenchError(QStringLiteral("createLocalContacts did not create all of %1").arg(batch.size()));
        m_progress.show(done, count);
        if (done <= count - last)
            continue;
        nanoseconds += answer.nanoseconds;
        measured += int(batch.size());
    }
    m_table.put(size, Figure::ContactsPerSecond, {measured * 1e9 / double(nanoseconds), {}});
    const qint64 ofNumbers = stand.client().askForNumbers(count - measured, measured);
    m_table.put(size, Figure::NumbersPerSecond, {measured * 1e9 / double(ofNumbers), {}});
}

void Bench::measureCreates(Stand &stand, int creates, int size)
{
    begin(size, "single creates");
    const QString copy = stand.databasePath() + QLatin1String(".bare");
    stand.directory().stop(); // the last to close the database puts everything into the one file
    if (!QFile::copy(stand.databasePath(), copy))
        throw BenchError(QStringLiteral("%1 cannot be copied").arg(stand.databasePath()));
    stand.directory().start();
    const int stored = size - creates - CreateRun::warmUp;
    CreateRun(stand.client(), copy, stored).measure(creates, size, m_table, m_progress);
}

void Bench::measureStarts(ServiceProcess &directory, int size)
{
    begin(size, "starts");
    const int starts = m_options.wants(QStringLiteral("starts")) ? m_options.starts : 1;
    Samples samples;
    for (int i = 0; i < starts; ++i) {
        directory.stop();
        samples.add(directory.start());
        m_progress.show(i + 1, starts);
    }
    if (m_options.wants(QStringLiteral("starts")))
        m_table.put(size, Figure::Start, {samples.median() / 1000, {}});
}

void Bench::putMemory(const ServiceProcess &directory, int size, Figure resident, Figure anonymous, Figure proportional)
{
    const ProcessMemory memory = ProcessMemory::of(directory.processId());
    m_table.put(size, resident, {memory.resident, {}});
    m_table.put(size, anonymous, {memory.anonymous, {}});
    m_table.put(size, proportional, {memory.proportional, {}});
}
