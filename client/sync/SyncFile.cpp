// SPDX-License-Identifier: Apache-2.0
#include "client/sync/SyncFile.h"

#include "platform/records/RegularFile.h"

#include <QDir>
#include <QXmlStreamReader>

std::optional<int> SyncFile::countContacts(const QString &path)
{
    QFile file(path);
    if (!RegularFile::open(file).isEmpty())
        return std::nullopt;
    QXmlStreamReader reader(&file);
    int count = 0;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QLatin1String("contact"))
            ++count;
    }
    return reader.hasError() ? std::nullopt : std::optional(count);
}

qint64 SyncFile::bytesWritten(const QString &path)
{
    const QFileInfo target(path);
    qint64 bytes = 0;
    for (const QFileInfo &file : target.dir().entryInfoList(QDir::Files | QDir::Hidden)) {
        if (file.fileName().contains(target.fileName()))
            bytes += file.size();
    }
    return bytes;
}
