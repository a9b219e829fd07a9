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
    const QString whose = name.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(name);
    return QStringLiteral("%1: card %2%3: %4").arg(file, QString::number(number), whose, reason);
}

QString ImportReport::toString() const
{
    const QString photos =
        withoutPhoto.isEmpty() ? QString() : QStringLiteral("%1 without their photo, ").arg(withoutPhoto.size());
    return QStringLiteral("created %1, refused %2, %3%4 s")
        .arg(QString::number(created), QString::number(refused.size()), photos,
             QString::number(double(milliseconds) / 1000, 'f', 1));
}

QJsonObject ImportReport::toJson() const
{
    return {{QStringLiteral("created"), created},
            {QStringLiteral("refused"), jsonOf(refused)},
            {QStringLiteral("withoutPhoto"), jsonOf(withoutPhoto)},
            {QStringLiteral("seconds"), double(milliseconds) / 1000}};
}
