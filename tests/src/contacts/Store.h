// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"
#include "src/directory/OpenDirectory.h"
#include "tests/src/dao/TemporaryStore.h"
#include "tests/support/Person.h"
#include "tests/support/ScriptedTransport.h"

inline Contact withType(int type, const QString &id = "x")
{
    return person(QString("firstName=A|name=B|type=%1|contactId=%2").arg(type).arg(id));
}

/// An empty database, and a telephony service that takes blanks out of numbers and puts "+" before canonical ones.
struct StoreParts
{
    StoreParts()
    {
        database.openDatabase(folder.path());
        database.createTables();
        fields.maxContacts = 1000;
        fields.comLogSize = 40;
        transport.answer = ScriptedTransport::answerAsTelephony;
    }
    void run(const QString &statement) { database.connection().executeQuery(statement); }

    LogCapture log;
    QTemporaryDir folder;
    Database database;
    ScriptedTransport transport;
    DirectoryFields fields;
};

/// The use cases on them, and a record of what was told.
struct Store : StoreParts, OpenDirectory
{
    Store()
        : OpenDirectory(database.connection(), transport, transport, fields, ModuleName::directory)
    {
        const auto note = [this](const char *what) {
            return [this, what](const QString &reqId, const auto &subjects, auto... flag) {
                QString line = QLatin1String(what) + ' ' + reqId;
                for (const auto &subject : subjects)
                    line += ' ' + idTold(subject);
                (line.append(flag ? " true" : " false"), ...);
                told.append(line);
                log.lines.append(line);
            };
        };
        QObject::connect(&contacts.news, &ContactNews::contactsCreated, note("created"));
        QObject::connect(&contacts.news, &ContactNews::contactsUpdated, note("updated"));
        QObject::connect(&contacts.news, &ContactNews::contactsDeleted, note("deleted"));
        QObject::connect(&contacts.news, &ContactNews::previewCreated, note("previewed"));
        QObject::connect(&contacts.news, &ContactNews::previewDeleted, note("unpreviewed"));
        QObject::connect(&contacts.news, &ContactNews::photoWanted, [this](const QString &id, const QString &photo) {
            told.append("wanted " + id + ' ' + photo);
        });
        QObject::connect(&contacts.news, &ContactNews::photoDropped,
                         [this](const QString &, const QString &photo) { told.append("dropped " + photo); });
        QObject::connect(&contacts.news, &ContactNews::databaseFull, [this] { told.append("full"); });
        QObject::connect(&contacts.news, &ContactNews::anonymousContactRefused, [this] { told.append("anonymous"); });
    }

    /// The news since the last call, each behind a "|".
    QString takeNews() { return std::exchange(told, {}).join('|'); }
    /// A code and the news.
    QString did(int code)
    {
        const QString since = takeNews();
        return QString::number(code) + (since.isEmpty() ? since : '|' + since);
    }
    QString create(const Contact &contact, const QString &reqId = "r")
    {
        return did(contacts.creation.createLocalContact(reqId, contact));
    }
    QString modify(const Contact &contact) { return did(contacts.modification.modifyLocalContact("r", contact)); }
    QString remove(const QString &id) { return did(contacts.deletion.deleteLocalContact("r", id)); }

    Contact stored(const QString &id) { return dao.getContact(id)->value(0); }
    /// Puts a contact of any type straight into the database and returns its id.
    QString put(Contact contact)
    {
        if (!dao.insertContact(contact, false) || !dao.misc().replacePairs(contact.contactId, contact.misc))
            qFatal("the contact cannot be put into the database");
        return contact.contactId;
    }
    /// What is told of a contact is what is stored of it.
    QString idTold(const Contact &contact)
    {
        return contact.contactId + (contact == stored(contact.contactId) ? "" : " (not as stored)");
    }
    static QString idTold(const QString &id) { return id; }
    /// From now on each write that changes a contact fails when it is committed.
    void failCommits()
    {
        run("PRAGMA foreign_keys=ON");
        run("CREATE TABLE one(id INTEGER PRIMARY KEY)");
        run("CREATE TABLE late(id INTEGER REFERENCES one(id) DEFERRABLE INITIALLY DEFERRED)");
        for (const QByteArray change : {"INSERT", "UPDATE", "DELETE"})
            run("CREATE TEMP TRIGGER " + change + "d AFTER " + change +
                " ON CONTACT BEGIN INSERT INTO late VALUES(1); END");
    }

    QStringList told;
};
