// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"
#include "src/dao/Database.h"
#include "src/directory/OpenDirectory.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScriptedTransport.h"

#include <QTemporaryDir>

inline Contact person(const char *firstName, const char *name, const char *officePhone = "")
{
    Contact contact;
    contact.firstName = QString::fromUtf8(firstName);
    contact.name = QString::fromUtf8(name);
    contact.officePhone = QString::fromUtf8(officePhone);
    return contact;
}

inline Contact withType(int type, const char *id = "x")
{
    Contact contact = person("A", "B");
    contact.type = type;
    contact.contactId = QLatin1String(id);
    return contact;
}

/// The use cases on a database of their own, with a scripted telephony service that prefixes canonical numbers with
/// "+" and a record of what was told.
struct Store
{
    Store()
    {
        database.openDatabase(folder.path());
        database.createTables();
        fields.maxContacts = 1000;
        fields.comLogSize = 40;
        transport.answer = ScriptedTransport::answerAsTelephony;
        open.emplace(database.connection(), transport, transport, fields, ModuleName::directory);
        record();
    }

    void record()
    {
        const ContactNews *told = &open->contacts.news;
        const auto note = [this](const char *what) {
            return [this, what](const QString &reqId, const auto &subjects, auto... flag) {
                QString line = QLatin1String(what) + QLatin1Char(' ') + reqId;
                for (const auto &subject : subjects)
                    line += QLatin1Char(' ') + idTold(subject);
                (line.append(flag ? QLatin1String(" true") : QLatin1String(" false")), ...);
                news.append(line);
                log.lines.append(line);
            };
        };
        QObject::connect(told, &ContactNews::contactsCreated, note("created"));
        QObject::connect(told, &ContactNews::contactsUpdated, note("updated"));
        QObject::connect(told, &ContactNews::contactsDeleted, note("deleted"));
        QObject::connect(told, &ContactNews::previewCreated, note("previewed"));
        QObject::connect(told, &ContactNews::previewDeleted, note("unpreviewed"));
        QObject::connect(told, &ContactNews::photoWanted, [this](const QString &id, const QString &photo) {
            news.append(QStringLiteral("wanted %1 %2").arg(id, photo));
        });
        QObject::connect(told, &ContactNews::photoDropped,
                         [this](const QString &, const QString &photo) { news.append("dropped " + photo); });
        QObject::connect(told, &ContactNews::databaseFull, [this] { news.append(QStringLiteral("full")); });
        QObject::connect(told, &ContactNews::anonymousContactRefused,
                         [this] { news.append(QStringLiteral("anonymous")); });
    }

    /// The news since the last call.
    QStringList takeNews() { return std::exchange(news, {}); }
    Contact stored(const QString &id) { return open->dao.getContact(id)->value(0); }
    /// Puts a contact of any type straight into the database and returns its id.
    QString put(Contact contact)
    {
        open->dao.insertContact(contact, false);
        open->dao.misc().replacePairs(contact.contactId, contact.misc);
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
        for (const char *statement :
             {"PRAGMA foreign_keys=ON", "CREATE TABLE one(id INTEGER PRIMARY KEY)",
              "CREATE TABLE late(id INTEGER REFERENCES one(id) DEFERRABLE INITIALLY DEFERRED)",
              "CREATE TEMP TRIGGER created AFTER INSERT ON CONTACT BEGIN INSERT INTO late VALUES(1); END",
              "CREATE TEMP TRIGGER updated AFTER UPDATE ON CONTACT BEGIN INSERT INTO late VALUES(1); END",
              "CREATE TEMP TRIGGER deleted AFTER DELETE ON CONTACT BEGIN INSERT INTO late VALUES(1); END"})
            database.connection().executeQuery(statement);
    }

    LogCapture log;
    QTemporaryDir folder;
    Database database;
    ScriptedTransport transport;
    DirectoryFields fields;
    std::optional<OpenDirectory> open;
    QStringList news;
};
