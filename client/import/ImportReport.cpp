// SPDX-License-Identifier: Apache-2.0
#include "client/import/ImportReport.h"

#include <QJsonArray>

namespace {

QJsonArray jsonOf(const QList<RefusedCard> &cards)
{
    QJsonArray array;
    for (const RefusedCard &card : cards)
        array.append(QJsonObject{{QStringLiteral("file"), card.file},
                                 {QStringLiteral("card"), card.number},
                                 {QStringLiteral("name"), card.name},
                                 {QStringLiteral("reason"), card.reason}});
    return array;
}

} // namespace

QString RefusedCard::toString() const
{
    if (number == 0)
        return QStringLiteral("%1: %2: %3").arg(file, name, reason);
    const QString whose = name.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(name);
    return QStringLiteral("%1: card %2%3: %4").arg(file, QString::number(number), whose, reason);
}

QString ImportReport::toString() const
{
    QStringList parts{QStringLiteral("created %1").arg(created), QStringLiteral("refused %1").arg(refused.size())};
    if (updated > 0)
        parts.append(QStringLiteral("updated %1").arg(updated));
    if (skipped > 0)
        parts.append(QStringLiteral("skipped %1 that were there").arg(skipped));
    if (!unreachable.isEmpty())
        parts.append(QStringLiteral("%1 numbers that no call finds").arg(unreachable.size()));
    if (!withoutPhoto.isEmpty())
        parts.append(QStringLiteral("%1 without their photo").arg(withoutPhoto.size()));
    if (notTried > 0)
        parts.append(QStringLiteral("%1 not tried").arg(notTried));
    parts.append(QStringLiteral("%1 s").arg(double(milliseconds) / 1000, 0, 'f', 1));
    return (isTrial ? QStringLiteral("a dry run, nothing is changed: ") : QString()) + parts.join(QLatin1String(", "));
}

void ImportReport::leaveOut(const QMap<QString, int> &properties)
{
    constexpr qsizetype mostNames = 100;
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        const bool isRoom = leftOut.size() < mostNames || leftOut.contains(property.key());
        leftOut[isRoom ? property.key() : QStringLiteral("others")] += *property;
    }
}

QString ImportReport::leftOutText() const
{
    QStringList parts;
    for (auto property = leftOut.cbegin(); property != leftOut.cend(); ++property)
        parts.append(QStringLiteral("%1 %2").arg(QString::number(*property), property.key()));
    return parts.isEmpty() ? QString() : QStringLiteral("left out of the cards: ") + parts.join(QLatin1String(", "));
}

QJsonObject ImportReport::toJson() const
{
    QJsonObject properties;
    for (auto property = leftOut.cbegin(); property != leftOut.cend(); ++property)
        properties.insert(property.key(), *property);
    return {{QStringLiteral("dryRun"), isTrial},
            {QStringLiteral("created"), created},
            {QStringLiteral("updated"), updated},
            {QStringLiteral("skipped"), skipped},
            {QStringLiteral("refused"), jsonOf(refused)},
            {QStringLiteral("unreachable"), jsonOf(unreachable)},
            {QStringLiteral("withoutPhoto"), jsonOf(withoutPhoto)},
            {QStringLiteral("notTried"), notTried},
            {QStringLiteral("leftOut"), properties},
            {QStringLiteral("seconds"), double(milliseconds) / 1000}};
}
