// SPDX-License-Identifier: Apache-2.0
#include "bench/ScreenRun.h"

#include "bench/BenchError.h"
#include "bench/MadeUpContacts.h"
#include "bench/Rounds.h"
#include "bench/ServiceProcess.h"
#include "bench/Stand.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QProcessEnvironment>

#include <algorithm>

namespace {

const QString program = QStringLiteral("kestin-presentation");
constexpr int warmUp = 3;

} // namespace

bool ScreenRun::isPossible()
{
    return ServiceProcess::exists(program);
}

ScreenRun::ScreenRun(const Stand &stand, int size)
    : m_stand(stand)
    , m_size(size)
{
    m_clock.start();
    QDBusConnection connection = stand.connection();
    connection.connect(QString(), QString(), QLatin1String(KestinBus::eventInterface),
                       QLatin1String(KestinBus::eventSignal), {EventName::searchResults},
                       QLatin1String(KestinBus::eventSignature), this, SLOT(noteResults()));
    connect(&m_screen, &QProcess::readyReadStandardOutput, this, &ScreenRun::take);
    constexpr int limitMs = 60000;
    m_limit.setInterval(limitMs);
    connect(&m_limit, &QTimer::timeout, &m_loop, [this] { m_loop.exit(EXIT_FAILURE); });
    connect(&m_screen, &QProcess::finished, &m_loop, [this] { m_loop.exit(EXIT_FAILURE); });
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    m_screen.setProcessEnvironment(environment);
    m_screen.setStandardErrorFile(stand.folder() + QLatin1String("/kestin-presentation.log"));
    m_screen.start(QCoreApplication::applicationDirPath() + QLatin1Char('/') + program,
                   {QStringLiteral("--play"), QStringLiteral("--language"), QStringLiteral("en")});
    nanosecondsOf(QStringLiteral("wait Phone: %1").arg(size));
    nanosecondsOf(QStringLiteral("settle"));
}

ScreenRun::~ScreenRun()
{
    disconnect(&m_screen, nullptr, this, nullptr);
    m_screen.closeWriteChannel();
    if (!m_screen.waitForFinished())
        m_screen.kill();
}

void ScreenRun::measure(int times, FigureTable &table, Progress &progress)
{
    measureCallers(times, table, progress);
    measureFirstResults(times, table, progress);
    measureScrolling(times, table, progress);
    table.put(m_size, Figure::ScreenResident, {ProcessMemory::of(m_screen.processId()).resident, {}});
}

/// How long the screen took for what the line says.
qint64 ScreenRun::nanosecondsOf(const QString &line)
{
    const qint64 begin = m_clock.nsecsElapsed();
    m_screen.write(line.toUtf8() + '\n');
    m_limit.start();
    if (m_loop.exec() != EXIT_SUCCESS)
        throw BenchError(QStringLiteral("%1 does not do what it is told: %2").arg(program, line));
    return m_clock.nsecsElapsed() - begin;
}

void ScreenRun::take()
{
    while (m_screen.canReadLine()) {
        const QByteArray line = m_screen.readLine().trimmed();
        if (line == "done" || line.startsWith("failed: "))
            m_loop.exit(line == "done" ? EXIT_SUCCESS : EXIT_FAILURE);
    }
}

void ScreenRun::raise(const QString &name, const ListEventArgument &arguments) const
{
    QDBusMessage event =
        QDBusMessage::createSignal(KestinBus::objectPath(ModuleName::telephony),
                                   QLatin1String(KestinBus::eventInterface), QLatin1String(KestinBus::eventSignal));
    event << name << QVariant::fromValue(arguments);
    m_stand.connection().send(event);
}

void ScreenRun::noteResults()
{
    if (m_told == 0)
        m_told = m_clock.nsecsElapsed();
}

/// From the event that tells of a call to the frame with who it is.
void ScreenRun::measureCallers(int times, FigureTable &table, Progress &progress)
{
    Samples samples;
    for (int i = 0; i < times + warmUp; ++i) {
        const int caller = int(qint64(i) * 7919 % m_size);
        raise(EventName::incomingCall, {{ArgumentName::phoneNumber, MadeUpContacts::canonicalNumbers(caller).first()}});
        const qint64 time = nanosecondsOf(QLatin1String("wait Incoming call: ") +
                                          MadeUpContacts::contact(caller).displayName() + QLatin1Char(','));
        if (i >= warmUp)
            samples.add(time);
        progress.show(i, times);
    }
    raise(EventName::callEnded, {});
    table.put(m_size, Figure::ScreenCaller, {samples.median() / 1000, samples.percentile99() / 1000});
}

/// From the event that tells the first results to the frame that shows them. Those whom the letter finds are further
/// down in the list of everybody, so none is on the screen before.
void ScreenRun::measureFirstResults(int times, FigureTable &table, Progress &progress)
{
    const QString name = QLatin1String(MadeUpContacts::nameGroups[2].name);
    Samples samples;
    for (int i = 0; i < times + warmUp; ++i) {
        m_told = 0;
        nanosecondsOf(QLatin1String("type ") + name.front());
        nanosecondsOf(QLatin1String("wait ") + name);
        const qint64 shown = m_clock.nsecsElapsed();
        nanosecondsOf(QStringLiteral("settle"));
        if (m_told == 0)
            throw BenchError(QStringLiteral("%1 shows %2, whom nobody has told").arg(program, name));
        if (i >= warmUp)
            samples.add(std::max<qint64>(0, shown - m_told)); // the screen may have been told before the bench
        nanosecondsOf(QStringLiteral("key Escape"));
        nanosecondsOf(QStringLiteral("settle"));
        progress.show(i, times);
    }
    table.put(m_size, Figure::ScreenFirstResults, {samples.median() / 1000, samples.percentile99() / 1000});
}

/// Many frames, each three contacts further.
void ScreenRun::measureScrolling(int times, FigureTable &table, Progress &progress)
{
    nanosecondsOf(QStringLiteral("key Down"));
    Samples samples;
    double work = 0;
    for (int i = 0; i < times + warmUp; ++i) {
        if (i == warmUp)
            work = processorMs(m_screen.processId());
        const qint64 time = nanosecondsOf(QStringLiteral("key PgDown")) + nanosecondsOf(QStringLiteral("frame"));
        if (i >= warmUp)
            samples.add(time);
        progress.show(i, times);
    }
    work = processorMs(m_screen.processId()) - work;
    table.put(m_size, Figure::ScreenScrolling, {samples.median() / 1000, samples.percentile99() / 1000});
    table.put(m_size, Figure::ScreenSlowestFrame, {samples.slowest() / 1000, {}});
    table.put(m_size, Figure::ScreenFrameWork, {work / times, {}});
}
