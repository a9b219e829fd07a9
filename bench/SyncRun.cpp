// SPDX-License-Identifier: Apache-2.0
#include "bench/SyncRun.h"

#include "bench/BareStore.h"
#include "bench/BenchError.h"
#include "bench/MadeUpContacts.h"
#include "bench/Rounds.h"
#include "bench/ServiceProcess.h"
#include "bench/Stand.h"
#include "platform/records/KestinBus.h"
#include "platform/records/RecordMaps.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>

namespace {

constexpr int rounds = 5;

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw BenchError(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
}

QByteArray read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw BenchError(QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString()));
    return file.readAll();
}

void copy(const QString &from, const QString &to)
{
    QFile::remove(to);
    if (!QFile::copy(from, to))
        throw BenchError(QStringLiteral("%1 cannot be copied").arg(from));
}

} // namespace

SyncRun::SyncRun(Stand &stand, int size)
    : m_stand(stand)
    , m_size(size)
    , m_client(stand.connection())
{
}

QString SyncRun::path(const char *name) const
{
    return m_stand.folder() + QLatin1Char('/') + QLatin1String(name);
}

void SyncRun::measure(FigureTable &table, Progress &progress)
{
    m_stand.directory().stop();
    m_stand.directory().start(); // whose peak is that of what follows
    const double before = ProcessMemory::of(m_stand.directory().processId()).peak;
    measureExports(table, progress);
    const double afterExports = ProcessMemory::of(m_stand.directory().processId()).peak;
    measureImports(table, progress);
    const double afterImports = ProcessMemory::of(m_stand.directory().processId()).peak;
    measureBeside(path("new.xml"), table);
    measureCards(table);
    table.put(m_size, Figure::ExportMemory, {afterExports - before, {}});
    table.put(m_size, Figure::ImportMemory, {afterImports - before, {}});
}

void SyncRun::measureExports(FigureTable &table, Progress &progress)
{
    Samples exports;
    Samples floors;
    for (int i = 0; i < rounds; ++i) {
        exports.add(m_client.exportTo(path("contacts.xml")));
        floors.add(BareSync::exportTo(m_stand.databasePath(), path("bare.xml")));
        progress.show(i + 1, rounds);
    }
    table.put(m_size, Figure::ExportsPerSecond, {m_size / exports.median() * 1e6, {}});
    table.put(m_size, Figure::BareExportsPerSecond, {m_size / floors.median() * 1e6, {}});
    table.put(m_size, Figure::ExportToFloor, {exports.median() / floors.median(), {}});
}

void SyncRun::measureImports(FigureTable &table, Progress &progress)
{
    const QString file = withoutIds();
    const QString nobody = path("nobody.xml");
    write(nobody, "<directory/>");
    m_client.importFrom(nobody);
    m_stand.directory().stop(); // the last to close the database puts everything into the one file
    const QString empty = path("empty.data");
    copy(m_stand.databasePath(), empty);
    m_stand.directory().start();
    Samples imports;
    Samples floors;
    Samples numbers;
    for (int i = 0; i < rounds; ++i) {
        imports.add(m_client.importFrom(file));
        copy(empty, path("bare.data"));
        floors.add(BareSync::importFrom(file, path("bare.data"), m_size));
        numbers.add(canonicalNumbers());
        if (i + 1 < rounds)
            m_client.importFrom(nobody);
        progress.show(i + 1, rounds);
    }
    table.put(m_size, Figure::ImportsPerSecond, {m_size / imports.median() * 1e6, {}});
    table.put(m_size, Figure::BareImportsPerSecond, {m_size / floors.median() * 1e6, {}});
    table.put(m_size, Figure::CanonizedPerSecond, {m_size / numbers.median() * 1e6, {}});
    table.put(m_size, Figure::ImportToFloor, {imports.median() / floors.median(), {}});
    table.put(m_size, Figure::ImportToFloors, {imports.median() / (floors.median() + numbers.median()), {}});
}

/// The last contact of the store as it is before an import goes on being known; what calls meanwhile wait.
void SyncRun::measureBeside(const QString &file, FigureTable &table)
{
    const QString number = MadeUpContacts::canonicalNumbers(m_size - 1).first();
    const auto beside = [this, &number](Samples &samples) {
        return [this, &number, &samples] {
            const auto answer = m_stand.client().callDirectory(QStringLiteral("getLocalContacts"), {number});
            if (answer.value<ListContact>().size() != 1)
                throw BenchError(QStringLiteral("%1 is not known meanwhile").arg(number));
            samples.add(answer.nanoseconds);
        };
    };
    Samples besideExports;
    Samples besideImports;
    Samples exports;
    Samples imports;
    for (int i = 0; i < rounds; ++i) {
        exports.add(m_client.exportTo(path("contacts.xml"), beside(besideExports)));
        imports.add(m_client.importFrom(file, beside(besideImports)));
    }
    table.put(m_size, Figure::LookUpBesideExports, {besideExports.median(), besideExports.percentile99()});
    table.put(m_size, Figure::LookUpBesideImports, {besideImports.median(), besideImports.percentile99()});
    table.put(m_size, Figure::ExportsBesideLookUps, {m_size / exports.median() * 1e6, {}});
    table.put(m_size, Figure::ImportsBesideLookUps, {m_size / imports.median() * 1e6, {}});
}

/// With the client's program, which is given the bus by its address.
void SyncRun::measureCards(FigureTable &table) const
{
    constexpr int cards = 1003;
    QByteArray file;
    for (int i = 0; i < cards; ++i) {
        const QByteArray number = QByteArray::number(300000 + i);
        file += "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Card" + number + ";First;;;\r\nFN:First Card" + number +
                "\r\nTEL;TYPE=work:+33198" + number + "\r\nTEL;TYPE=cell:+33698" + number + "\r\nEMAIL:c" + number +
                "@example.com\r\nORG:Example\r\nEND:VCARD\r\n";
    }
    write(path("cards.vcf"), file);
    m_stand.set(QStringLiteral("DirMaxContact"), QString::number(m_size + cards));
    QElapsedTimer timer;
    timer.start();
    if (m_stand.runClient({QStringLiteral("import"), path("cards.vcf")}) != 0)
        throw BenchError(QStringLiteral("kestin-dir import fails"));
    table.put(m_size, Figure::CardsPerSecond, {cards * 1e9 / double(timer.nsecsElapsed()), {}});
}

QString SyncRun::withoutIds() const
{
    QString text = QString::fromUtf8(read(path("contacts.xml")));
    text.replace(QRegularExpression(QStringLiteral("duid=\"[^\"]*\"")), QStringLiteral("duid=\"\""));
    text.replace(QRegularExpression(QStringLiteral("<duid>[^<]*</duid>")), QStringLiteral("<duid></duid>"));
    const QString result = path("new.xml");
    write(result, text.toUtf8());
    return result;
}

/// The nanoseconds that the telephony service takes for the numbers of all, asked for in lists as an import asks.
qint64 SyncRun::canonicalNumbers() const
{
    constexpr int atATime = 200;
    qint64 nanoseconds = 0;
    for (int done = 0; done < m_size;) {
        QMapQStringQStringList request;
        for (const int end = std::min(m_size, done + atATime); done < end; ++done)
            request.insert(QString::number(done), MadeUpContacts::rawNumbers(done));
        nanoseconds += m_stand.client()
                           .call(ModuleName::telephony, QStringLiteral("makeCanonicalNumberMapWithoutPrefix"),
                                 {QVariant::fromValue(request)})
                           .nanoseconds;
    }
    return nanoseconds;
}
