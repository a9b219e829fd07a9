// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/dao/DaoContact.h"
#include "src/dao/Database.h"
#include "tests/support/LogCapture.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

/// The empty schema in a folder of its own, and the access to it.
struct TemporaryStore
{
    TemporaryStore()
    {
        database.openDatabase(folder.path());
        database.createTables();
        dao.emplace(database.connection());
    }

    /// Stores the contact under this id, which one of this type keeps unless told otherwise.
    Contact add(const QString &id, Contact contact = {}, int type = ContactType::Cached)
    {
        contact.contactId = id;
        contact.type = type;
        (void)dao->insertContact(contact, true); // some are to fail
        return contact;
    }

    /// The first column of the rows of a statement, joined with a blank.
    QString run(const char *sql)
    {
        QStringList rows;
        QSqlQuery query = database.connection().executeQuery(QString::fromUtf8(sql));
        while (query.next())
            rows.append(query.value(0).toString());
        return rows.join(u' ');
    }

    /// Makes the last page of a table or index one that cannot be read.
    void damage(const char *name)
    {
        run("PRAGMA wal_checkpoint(TRUNCATE)");
        const QString page =
            run(qPrintable(u"SELECT max(pageno) FROM dbstat WHERE name='%1'"_s.arg(QLatin1String(name))));
        QFile file(database.filePath());
        constexpr qint64 pageSize = 4096;
        if (!file.open(QIODevice::ReadWrite) || !file.seek((page.toInt() - 1) * pageSize) ||
            file.write(QByteArray(pageSize, 'x')) != pageSize)
            qFatal("no page can be damaged");
        run("PRAGMA shrink_memory"); // forgets what it has read
    }

    QTemporaryDir folder;
    Database database;
    std::optional<DaoContact> dao;
};

inline QString idsOf(const std::optional<ListContact> &contacts)
{
    if (!contacts)
        return u"unreadable"_s;
    QStringList ids;
    for (const Contact &contact : *contacts)
        ids.append(contact.contactId);
    return ids.join(u',');
}
