// SPDX-License-Identifier: Apache-2.0
#include "bench/RemoteRun.h"

#include "bench/BenchError.h"
#include "bench/PacketWatch.h"
#include "bench/Rounds.h"
#include "bench/SearchClient.h"
#include "bench/Stand.h"
#include "platform/records/KestinBus.h"

#include <QFile>

#include <array>

namespace {

const QString program = QStringLiteral("kestin-wsmanager");
constexpr int pageSize = 20;

/// People of the company whose family names begin alike.
struct Family
{
    const char *name;
    int packets;
    Figure search;
    Figure packet;
};

constexpr std::array families{Family{"Quill", 1, Figure::RemoteSearch1, Figure::RemotePacket1},
                              Family{"Xenakis", 10, Figure::RemoteSearch10, Figure::RemotePacket10},
                              Family{"Zubiri", 100, Figure::RemoteSearch100, Figure::RemotePacket100}};

QByteArray entryOf(const Family &family, int index)
{
    const QByteArray name = QByteArray(family.name) + ' ' + QByteArray::number(index);
    const QByteArray uid = QByteArray(family.name).toLower() + QByteArray::number(index);
    return "dn: uid=" + uid + ",ou=people,dc=example,dc=org\nobjectClass: inetOrgPerson\ncn: Ingrid " + name +
           "\nsn: " + name + "\ngivenName: Ingrid\nuid: " + uid + "\nmail: " + uid +
           "@example.org\no: Example Works\ntelephoneNumber: +33 1 99 " +
           QByteArray::number(index).rightJustified(6, '0') + "\n\n";
}

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        throw BenchError(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
}

/// The path of a configuration for it; that of the LDIF file is in there.
QString makeCompany(const QString &folder)
{
    QByteArray entries;
    for (const Family &family : families) {
        for (int i = 0; i < family.packets * pageSize; ++i)
            entries += entryOf(family, i);
    }
    const QString ldif = folder + QLatin1String("/company.ldif");
    write(ldif, entries);
    const QString config = folder + QLatin1String("/wsmanager.ini");
    // The usual limit of a search is less than the longest list here.
    write(
        config,
        QStringLiteral("[directory]\nldif=\"%1\"\npageSize=%2\nmaxResults=100000\n").arg(ldif).arg(pageSize).toUtf8());
    return config;
}

} // namespace

bool RemoteRun::isPossible()
{
    return ServiceProcess::exists(program);
}

RemoteRun::RemoteRun(const Stand &stand)
    : m_stand(stand)
    , m_wsmanager(program, ModuleName::webServiceManager, stand.folder(), stand.connection(),
                  {QStringLiteral("--config"), makeCompany(stand.folder())})
{
    m_wsmanager.start();
}

void RemoteRun::measure(int searches, int size, FigureTable &table, Progress &progress)
{
    constexpr int warmUp = 2;
    SearchClient searcher(m_stand.connection());
    Rounds rounds;
    std::array<std::size_t, families.size()> kinds{};
    for (std::size_t i = 0; i < families.size(); ++i) {
        const Family &family = families.at(i);
        kinds.at(i) = rounds.add([&searcher, &family](int) {
            return searcher.search(QLatin1String(family.name), family.packets * pageSize, false).completion;
        });
    }
    rounds.run(warmUp, searches, 1, progress);
    for (std::size_t i = 0; i < families.size(); ++i) {
        const double milliseconds = rounds.samples(kinds.at(i)).median() / 1000;
        table.put(size, families.at(i).search, {milliseconds, {}});
        table.put(size, families.at(i).packet, {milliseconds / families.at(i).packets, {}});
    }
}

void RemoteRun::measurePackets(int searches, int size, FigureTable &table)
{
    const Family &family = families.at(1);
    PacketWatch watch(m_stand.connection());
    Samples samples;
    for (int i = 0; i < searches; ++i)
        watch.measure(QLatin1String(family.name), family.packets, samples);
    table.put(size, Figure::PacketTaken, {samples.median() / 1000, samples.percentile99() / 1000});
}
