// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

/// A card that made no contact, or a contact that lacks something of the card.
struct RefusedCard
{
    QString file;
    int number = 0; ///< position in its file, from 1; 0 for what has none
    QString name;   ///< whose card it is, as far as that is known
    QString reason;

    /// "people.vcf: card 3 (Zoë Müller): why"
    QString toString() const;
};

/// What an import has done so far.
struct ImportReport
{
    bool isTrial = false; ///< nothing was changed: the numbers say what would be
    int created = 0;
    int updated = 0;
    int skipped = 0; ///< cards of contacts that were there, and as they were
    QList<RefusedCard> refused;
    QList<RefusedCard> unreachable;  ///< created, but with a number by which no caller is recognised
    QList<RefusedCard> withoutPhoto; ///< created, but their embedded photo could not be kept
    int notTried = 0;                ///< read when the import stopped, and neither created nor refused
    QMap<QString, int> leftOut;      ///< properties that no contact has a place for: how many of each name
    qint64 milliseconds = 0;

    QString toString() const;
    /// What was left out, on a line of its own. Empty when nothing was.
    QString leftOutText() const;
    void leaveOut(const QMap<QString, int> &properties);
    QJsonObject toJson() const;
};
