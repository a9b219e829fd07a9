// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/presentation/ModuleCalls.h"

#include <QCache>
#include <QHash>
#include <QStringList>
#include <QUrl>

/// What a row of the list shows beyond its summary: photo and company. It is read contact by contact, for rows that
/// are looked at; of many that were passed by only the last are.
class RowDetails : public QObject
{
    Q_OBJECT

public:
    explicit RowDetails(ModuleCalls &calls);

    struct Details
    {
        QUrl photo;
        QString company;
        bool isOld = false;
    };

    /// Empty ones, or the old ones, while they are not known; they are asked for then, and `known` tells when they are.
    Details of(const QString &contactId);
    /// They may have changed.
    void forget(const QString &contactId);
    void forgetAll();

Q_SIGNALS:
    void known(const QString &contactId);

private:
    void askNext();

    static constexpr int kept = 300;
    static constexpr int waitingAtMost = 60;
    static constexpr int underWayAtMost = 4;

    ModuleCalls &m_calls;
    QCache<QString, Details> m_known{kept};
    QStringList m_waiting;          ///< the last is the next
    QHash<QString, int> m_underWay; ///< by id; the number tells whether what comes is still wanted
    int m_asked = 0;
    int m_unanswered = 0;
};
