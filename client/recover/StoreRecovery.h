// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/recover/LeafRows.h"
#include "client/recover/PrivateCopy.h"
#include "client/recover/SqliteTables.h"
#include "platform/records/Contact.h"

#include <QHash>
#include <QMap>
#include <QSet>

/// What a database of the directory holds.
struct RecoveredStore
{
    ListContact contacts;               ///< of the user, those that could be read, in the order in which they were made
    QMap<int, int> read;                ///< how many contacts could be read of each type
    std::optional<QMap<int, int>> held; ///< how many there are, read or not; none when nothing tells
    bool isDamaged = false;
    bool mayLackPairs = false; ///< not all misc pairs could be read
    /// Contacts or pairs that had been removed may be among them: what tells that they were is damaged.
    bool mayHoldRemoved = false;
};

/// Reads a database in which anything may be broken. What SQLite can reach it reads; what it cannot is taken from the
/// pages themselves.
class StoreRecovery
{
public:
    /// `progress` outlives this object. Throws CommandFailure when the file cannot be copied, is no database, or is one
    /// of somebody else.
    StoreRecovery(const QString &path, RecoveryProgress &progress);

    /// To be called once. Throws CommandFailure when it is interrupted.
    RecoveredStore read();

private:
    /// What is known about the rows of a table before its pages are looked at.
    struct Table
    {
        QStringList columns; ///< empty when nothing tells
        SqliteTables::Walk walk;
        QSet<qint64> read;
        std::optional<QHash<qint64, QString>> listed; ///< all rows, and the value by which the index is ordered

        bool lacks(qint64 row) const;
    };

    bool readTables();
    void readTable(SqliteTables &tables, const QString &name, const QStringList &columns, const QString &index,
                   const QString &indexed, Table &table, const SqliteTables::Take &take);
    void takeMisc(const StoredRow &row);
    void readPages();
    void takeRow(const LeafRows::Row &row);
    void add(const Contact &contact, qint64 id);
    Contact contactAt(qint64 row) const;
    RecoveredStore result() const;

    QString m_name;
    RecoveryProgress &m_progress;
    PrivateCopy m_copy;
    bool m_isLogWhole;
    PageFile m_pages;
    Table m_contactTable;
    Table m_miscTable;
    QMap<qint64, Contact> m_contacts; ///< by their rows; of others than the user's only what counts
    QHash<QString, QMap<qint64, QPair<QString, QString>>> m_misc; ///< by id of the contact, then by row
    QList<QStringList> m_orders;                                  ///< in which the values of a row may stand
    QList<PageFile::Encoding> m_encodings;
    bool m_isMended = false;
    bool m_isFreeListKnown = true;
};
