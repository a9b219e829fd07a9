// SPDX-License-Identifier: Apache-2.0
#include "bench/Report.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStorageInfo>
#include <QStringList>
#include <QSysInfo>
#include <QThread>

#include <sqlite3.h>

namespace {

QString processorName()
{
    QFile file(QStringLiteral("/proc/cpuinfo"));
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : file.readAll().split('\n')) {
            if (line.startsWith("model name"))
                return QString::fromUtf8(line.mid(line.indexOf(':') + 1)).trimmed();
        }
    }
    return QSysInfo::currentCpuArchitecture();
}

/// 12345 as "12 345".
QString grouped(double number, int decimals)
{
    QString text = QString::number(number, 'f', decimals);
    const qsizetype wholeDigits = decimals > 0 ? text.size() - decimals - 1 : text.size();
    for (qsizetype position = wholeDigits - 3; position > 0; position -= 3)
        text.insert(position, QLatin1Char(' '));
    return text;
}

QString rowOf(const QStringList &cells)
{
    return QLatin1String("| ") + cells.join(QLatin1String(" | ")) + QLatin1String(" |\n");
}

QString cellOf(const FigureTitle &title, int size, const QMap<int, FigureTable::Value> &values)
{
    if (!values.contains(size))
        return QStringLiteral("-");
    const FigureTable::Value value = values.value(size);
    QString text = grouped(value.value, title.decimals);
    if (value.percentile99)
        text += QLatin1String(" / ") + grouped(*value.percentile99, title.decimals);
    return FigureTable::isWithinBound(title, size, value) ? text : QStringLiteral("**%1**").arg(text);
}

QJsonObject objectOf(const FigureTitle &title, int size, const FigureTable::Value &value)
{
    QJsonObject object{{QStringLiteral("figure"), QLatin1String(title.key)},
                       {QStringLiteral("contacts"), size},
                       {QStringLiteral("unit"), QString::fromUtf8(title.unit)},
                       {QStringLiteral("value"), value.value},
                       {QStringLiteral("withinBound"), FigureTable::isWithinBound(title, size, value)}};
    if (value.percentile99)
        object.insert(QStringLiteral("percentile99"), *value.percentile99);
    return object;
}

} // namespace

Machine Machine::describe(const QString &workDirectory)
{
    Machine machine;
    machine.processor = processorName();
    machine.cores = QThread::idealThreadCount();
    machine.kernel = QSysInfo::kernelType() + QLatin1Char(' ') + QSysInfo::kernelVersion();
    machine.fileSystem = QString::fromUtf8(QStorageInfo(workDirectory).fileSystemType());
    machine.software =
        QStringLiteral("Qt %1, SQLite %2, build type %3")
            .arg(QLatin1String(qVersion()), QLatin1String(sqlite3_libversion()), QLatin1String(KESTIN_BUILD_TYPE));
    return machine;
}

QString Report::markdown(const Machine &machine, const FigureTable &table)
{
    QString text = QStringLiteral("%1, %2 cores, %3, data on %4. %5.\n\n")
                       .arg(machine.processor)
                       .arg(machine.cores)
                       .arg(machine.kernel, machine.fileSystem, machine.software);
    QStringList head{QStringLiteral("figure"), QStringLiteral("unit"), QStringLiteral("wanted")};
    const QList<int> sizes = table.sizes();
    for (const int size : sizes)
        head.append(grouped(size, 0) + QLatin1String(" contacts"));
    text += rowOf(head);
    text += rowOf(QStringList(3, QStringLiteral("---")) + QStringList(sizes.size(), QStringLiteral("---:")));
    for (const FigureTitle &title : FigureTable::titles) {
        const auto values = table.values(title.figure);
        if (values.isEmpty())
            continue;
        QStringList cells{QString::fromUtf8(title.text), QString::fromUtf8(title.unit),
                          QString::fromUtf8(title.wanted)};
        for (const int size : sizes)
            cells.append(cellOf(title, size, values));
        text += rowOf(cells);
    }
    return text +
           QStringLiteral("\nTwo numbers are the median and the 99th percentile. Bold: not within what is wanted.\n");
}

QString Report::json(const Machine &machine, const FigureTable &table)
{
    QJsonArray figures;
    for (const FigureTitle &title : FigureTable::titles) {
        const auto values = table.values(title.figure);
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            figures.append(objectOf(title, value.key(), value.value()));
    }
    const QJsonObject object{
        {QStringLiteral("processor"), machine.processor}, {QStringLiteral("cores"), machine.cores},
        {QStringLiteral("kernel"), machine.kernel},       {QStringLiteral("fileSystem"), machine.fileSystem},
        {QStringLiteral("software"), machine.software},   {QStringLiteral("figures"), figures}};
    return QString::fromUtf8(QJsonDocument(object).toJson());
}
