// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/KestinBus.h"
#include "src/impexp/ContactExport.h"
#include "src/impexp/ContactImport.h"
#include "src/photofiles/PhotoFiles.h"
#include "tests/support/UseCaseFixture.h"

#include <QRegularExpression>

/// Import and export of a store of their own.
struct SyncFixture : UseCaseFixture
{
    SyncFixture()
    {
        const auto note = [this](const char *what) {
            return [this, what](auto &&...texts) {
                QStringList line{what};
                (line.append(shown(texts)), ...);
                news.append(line.join(' '));
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
    static QString shown(const QStringList &texts) { return texts.join(','); }
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
        importFile();
        return std::exchange(news, {});
    }
    void importFile()
    {
        importing.importFromXml(path());
        longWork.finish();
    }
    QStringList exportAll(bool full = true, const QDateTime &previous = {})
    {
        exporting.exportToXml(path(), 2, full, "id", "device", QDateTime::currentDateTimeUtc(), previous);
        longWork.finish();
        return std::exchange(news, {});
    }
    /// How many contacts telephony was asked for, by call.
    QList<qsizetype> canonized() const
    {
        QList<qsizetype> sizes;
        for (const ScriptedTransport::Call &call : transport.calls)
            sizes.append(call.arguments.value(0).value<QMapQStringQStringList>().size());
        return sizes;
    }

    QStringList news;
    PhotoFiles photos{*dao, fields};
    LongWork longWork;
    ContactImport importing{*dao, fields, transport, photos, longWork};
    ContactExport exporting{*dao, fields, ModuleName::directory, longWork};
};
