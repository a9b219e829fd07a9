// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"
#include "src/directory/OpenDirectory.h"
#include "tests/support/UseCaseFixture.h"

inline Contact withType(int type, const QString &id = "x")
{
    return person(QString("firstName=A|name=B|type=%1|contactId=%2").arg(type).arg(id));
}

/// The use cases on an empty store, and a record of what was told.
struct ContactsFixture : UseCaseFixture, LongWork, OpenDirectory
{
    using OpenDirectory::dao;

    ContactsFixture()
        : OpenDirectory(database.connection(), transport, transport, fields, ModuleName::directory, *this)
    {
        const auto note = [this](const char *what) {
            return [this, what](const QString &reqId, const auto &subjects, auto... flag) {
                QString line = QLatin1String(what) + ' ' + reqId;
                for (const auto &subject : subjects)
                    line += ' ' + idTold(subject);
                (line.append(flag ? " true" : " false"), ...);
                told.append(line);
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
    /// The name of a result code, and the news.
    QString did(int code)
    {
        static const QMap<int, QString> names{{ResultCode::done, "done"},
                                              {ResultCode::wrongType, "wrongType"},
                                              {ResultCode::noSuchContact, "noSuchContact"},
                                              {ResultCode::capacityReached, "capacityReached"},
                                              {ResultCode::nothingToDo, "nothingToDo"},
                                              {ResultCode::readOnly, "readOnly"},
                                              {ResultCode::writeFailed, "failed"}};
        return (QStringList{names.value(code)} + std::exchange(told, {})).join('|');
    }
    QString create(const Contact &contact, const QString &reqId = "r")
    {
        return did(contacts.creation.createLocalContact(reqId, contact));
    }
    QString modify(const Contact &contact) { return did(contacts.modification.modifyLocalContact("r", contact)); }
    QString remove(const QString &id) { return did(contacts.deletion.deleteLocalContact("r", id)); }

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
    QStringList told;
};
