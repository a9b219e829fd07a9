// SPDX-License-Identifier: Apache-2.0
#include "client/import/ImportReport.h"

#include <QJsonArray>

QString RefusedCard::toString() const
{
    const QString whose = name.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(name);
    return QStringLiteral("%1: card %2%3: %4").arg(file, QString::number(number), whose, reason);
}

QString ImportReport::toString() const
{
    return QStringLiteral("created %1, refused %2, %3 s")
        .arg(created)
        .arg(refused.size())
        .arg(double(milliseconds) / 1000, 0, 'f', 1);
}

QJsonObject ImportReport::toJson() const
{
    QJsonArray cards;
    for (const RefusedCard &card : refused)
        cards.append(QJsonObject{{QStringLiteral("file"), card.file},
                                 {QStringLiteral("card"), card.number},
                                 {QStringLiteral("name"), card.name},
                                 {QStringLiteral("reason"), card.reason}});
    return {{QStringLiteral("created"), created},
            {QStringLiteral("refused"), cards},
            {QStringLiteral("seconds"), double(milliseconds) / 1000}};
}
