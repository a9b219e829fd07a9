// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/dao/Connection.h"
#include "src/dao/SetAsideFiles.h"
#include "src/dao/StoreLock.h"

#include <QSqlError>
#include <QString>

#include <memory>

/// The database file of the directory: where it lies, its schema, the check of that at start, and its rebuilding.
/// Opened on Qt's default connection, so on one thread: the one that opens it.
class Database
{
public:
    Database() = default;
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    /// Opens the file in `folder`, or in the usual folder when that is empty. A missing folder or file is created.
    /// Another process that does so is refused as long as this object lives; the connections of workers are not. A file
    /// that is no database opens as well; checkTables finds out.
    bool openDatabase(const QString &folder);
    /// Whether both tables and exactly the three triggers are there. The first failure ends the check (info line).
    bool checkTables();
    /// Both tables, and with them every contact, the indexes and the triggers.
    bool dropTables();
    /// Throws everything away and builds the schema empty. False when that failed (logged): all is as it was.
    bool createTables();

    /// Brings tables that passed the check to what the statements need: the column that the check leaves out, filled
    /// with the numbers as entered, and the indexes that the look-ups want; then each id is left to one contact
    /// (DoubledIds). Changes nothing when all is so. What cannot be made is logged, with what follows from it.
    void completeTables();
    /// Moves a file that failed the check out of the way and opens an empty file, so that nothing is lost; the
    /// three newest of such files are kept. False, with the file left where it lies, when the check failed for another
    /// reason than its content (a full disk, a folder without permission) or when it cannot be moved.
    bool setAside();

    /// The databases that are kept because they failed the check.
    SetAsideFiles setAsideFiles() const { return SetAsideFiles(m_filePath); }

    /// Valid after openDatabase.
    Connection &connection() { return *m_connection; }
    QString filePath() const { return m_filePath; }

    /// Makes an open connection write as the store is written: durable, and beside readers.
    static void prepare(const QSqlDatabase &handle);

private:
    bool probe(const QString &statement, const char *failure);
    bool checkTriggers();
    bool isEmpty();
    bool isUnreadable() const;
    bool addMissingColumn();
    bool createLookUpIndexes();
    bool refuse(const QSqlError &reason);

    StoreLock m_lock;
    QString m_folder;
    QString m_filePath;
    std::unique_ptr<Connection> m_connection;
    QSqlError m_checkError; ///< what kept the check from reading, if anything did
};
