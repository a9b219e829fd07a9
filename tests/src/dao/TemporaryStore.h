// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/dao/DaoContact.h"
#include "src/dao/Database.h"
#include "src/dao/Transaction.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Test.h"

/// The empty schema in a folder of its own, and the access to it.
struct TemporaryStore
{
    TemporaryStore()
    {
        database.openDatabase(folder.path());
        database.createTables();
        dao.emplace(database.connection());
    }

    /// Stores the contact, with this id where the type lets it keep its own.
    Contact add(const QString &id, Contact contact = {}, int type = ContactType::Cached)
    {
        contact.contactId = id;
        contact.type = type;
        (void)dao->insertContact(contact, true); // some are to fail
        return contact;
    }

    /// So many local contacts in one write: latinName counts from 0, and so does a pair of each, "key".
    void fill(int count)
    {
        Transaction transaction(database.connection());
        for (int i = 0; i < count; ++i) {
            Contact contact;
            contact.latinName = QString::number(i);
            (void)dao->misc().insertPair(add({}, contact, ContactType::Local).contactId, "key", contact.latinName);
        }
        (void)transaction.commit();
    }

    /// The first column of the rows of a statement, joined with a blank.
    QString run(const QString &sql)
    {
        QStringList rows;
        QSqlQuery query = database.connection().executeQuery(sql);
        while (query.next())
            rows.append(query.value(0).toString());
        return rows.join(' ');
    }

    /// Makes the last page of a table or index, or its first, one that cannot be read.
    void damage(const QString &name, const QString &which = "max")
    {
        run("PRAGMA wal_checkpoint(TRUNCATE)");
        const QString page = run("SELECT " + which + "(pageno) FROM dbstat WHERE name='" + name + '\'');
        QFile file(database.filePath());
        constexpr qint64 pageSize = 4096;
        if (!file.open(QIODevice::ReadWrite) || !file.seek((page.toInt() - 1) * pageSize) ||
            file.write(QByteArray(pageSize, 'x')) != pageSize)
            qFatal("no page can be damaged");
        run("PRAGMA shrink_memory"); // forgets what it has read
    }

    /// Takes the last contact out of an index.
    void outdate(const QString &index)
    {
        constexpr qint64 pageSize = 4096;
        run("DELETE FROM CONTACT WHERE contactId='#CONTACT_201#'");
        run("PRAGMA wal_checkpoint(TRUNCATE)");
        const QStringList pages = run("SELECT pageno FROM dbstat WHERE name='" + index + '\'').split(' ');
        const QByteArray before = contentOf(database.filePath());
        fill(1);
        run("PRAGMA wal_checkpoint(TRUNCATE)");
        QFile file(database.filePath());
        if (!file.open(QIODevice::ReadWrite))
            qFatal("no page can be put back");
        for (const QString &page : pages) {
            file.seek((page.toInt() - 1) * pageSize);
            file.write(before.mid((page.toInt() - 1) * pageSize, pageSize));
        }
        file.close();
        run("PRAGMA shrink_memory");
    }

    /// From now on each write that changes a contact fails when it is committed.
    void failCommits()
    {
        run("PRAGMA foreign_keys=ON");
        run("CREATE TABLE early(id INTEGER PRIMARY KEY)");
        run("CREATE TABLE late(id INTEGER REFERENCES early(id) DEFERRABLE INITIALLY DEFERRED)");
        for (const QString change : {"INSERT", "UPDATE", "DELETE"})
            run("CREATE TRIGGER " + change + "d AFTER " + change + " ON CONTACT BEGIN INSERT INTO late VALUES(1); END");
    }

    QTemporaryDir folder;
    Database database;
    std::optional<DaoContact> dao;
};

inline QString idsOf(const std::optional<ListContact> &contacts)
{
    if (!contacts)
        return "unreadable";
    QStringList ids;
    for (const Contact &contact : *contacts)
        ids.append(contact.contactId);
    return ids.join(',');
}
