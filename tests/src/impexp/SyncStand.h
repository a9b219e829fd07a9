// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/KestinBus.h"
#include "src/impexp/ContactExport.h"
#include "src/impexp/ContactImport.h"
#include "src/numbers/CanonicalNumbers.h"
#include "src/photofiles/PhotoFiles.h"
#include "tests/src/dao/TemporaryStore.h"
#include "tests/support/Files.h"
#include "tests/support/Person.h"
#include "tests/support/ScriptedTransport.h"

#include <QRegularExpression>

/// Import and export on a database of their own. Canonical numbers are the raw ones behind a "+"; photo files
/// lie in a folder of their own.
struct SyncStand : TemporaryStore
{
    SyncStand()
    {
        QDir(folder.path()).mkdir("photos");
        telephony.answer = ScriptedTransport::answerAsTelephony;
        fields.maxContacts = 1000;
        fields.photoDirectory = folder.filePath("photos/");
        fields.fileDiskUserQuota = 100 << 20;
        const auto note = [this](const char *what) {
            return [this, what](auto &&...texts) {
                QStringList line{what};
                (line.append(shown(texts)), ...);
                news.append(line.join(u' '));
            };
        };
        QObject::connect(&importing, &ContactImport::photoDropped, note("dropped"));
        QObject::connect(&importing, &ContactImport::photoDropped, &photos, &PhotoFiles::removeIfUnused);
        QObject::connect(&importing, &ContactImport::importFinished, note("imported"));
        QObject::connect(&importing, &ContactImport::contactsDeleted, note("deleted"));
        QObject::connect(&importing, &ContactImport::contactNotImported, note("not imported"));
        QObject::connect(&importing, &ContactImport::contentChanged, note("changed"));
        QObject::connect(&exporting, &ContactExport::exportFinished, note("exported"));
        QObject::connect(&exporting, &ContactExport::contactsNotExported, note("not exported"));
    }

    static QString shown(const ImpExpStatus &status) { return status.toString(); }
    static QString shown(const QStringList &texts) { return texts.join(u','); }
    /// New photo files are all called "photo_new".
    QString shown(const QString &text) const
    {
        static const QRegularExpression made("photo_[0-9a-f]{32}");
        return QString(text).remove(fields.photoDirectory).replace(made, "photo_new");
    }

    QString path() const { return folder.filePath("sync.xml"); }
    /// What was told of the import of this content, one line each.
    QStringList import(const QByteArray &content)
    {
        writeFile(path(), "<directory>" + content + "</directory>");
        importing.importFromXml(path());
        return std::exchange(news, {});
    }
    QStringList exportAll(bool full = true, const QDateTime &previous = {})
    {
        exporting.exportToXml(path(), 2, full, "id", "device", QDateTime::currentDateTimeUtc(), previous);
        return std::exchange(news, {});
    }
    Contact stored(const QString &id) { return dao->getContact(id)->value(0); }
    /// How many contacts telephony was asked for, by call.
    QList<qsizetype> canonized() const
    {
        QList<qsizetype> sizes;
        for (const ScriptedTransport::Call &call : telephony.calls)
            sizes.append(call.arguments.value(0).value<QMapQStringQStringList>().size());
        return sizes;
    }
    QStringList photoFiles() const { return QDir(fields.photoDirectory).entryList(QDir::Files, QDir::Name); }

    LogCapture log;
    DirectoryFields fields;
    QStringList news;
    ScriptedTransport telephony;
    CanonicalNumbers numbers{telephony};
    PhotoFiles photos{*dao, fields};
    ContactImport importing{*dao, fields, numbers, photos};
    ContactExport exporting{*dao, fields, ModuleName::directory};
};
