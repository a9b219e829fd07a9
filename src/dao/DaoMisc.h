// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"
#include "src/dao/Statement.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

/// Reads and writes the misc pairs of contacts (table MISC). One a DaoContact; on the thread of its connection.
/// Writes answer whether they were done, reads nothing when they could not be made to the end; the log says why not.
class DaoMisc
{
public:
    explicit DaoMisc(Connection &connection);

    [[nodiscard]] bool insertPair(const QString &contactId, const QString &key, const QString &value);
    [[nodiscard]] bool updatePair(const QString &contactId, const QString &key, const QString &value);
    [[nodiscard]] bool deletePair(const QString &contactId, const QString &key);
    [[nodiscard]] bool deletePairs(const QString &contactId);
    /// The value of the key's first row; an empty list when there is none.
    std::optional<QStringList> value(const QString &contactId, const QString &key);
    std::optional<QMap<QString, QString>> pairs(const QString &contactId);

    /// Puts the stored pairs into the contact. False when they could not all be read.
    [[nodiscard]] bool fill(Contact &contact);

    /// Makes the stored pairs exactly these. Nothing is written when they are already.
    [[nodiscard]] bool replacePairs(const QString &contactId, const QMap<QString, QString> &pairs);

private:
    Statement m_insert;
    Statement m_update;
    Statement m_delete;
    Statement m_deleteAll;
    Statement m_selectValue;
    Statement m_selectPairs;
};
