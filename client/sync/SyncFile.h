// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFile>
#include <QHash>
#include <QString>
#include <QXmlStreamReader>

#include <functional>
#include <optional>

/// An entry of a synchronisation file.
struct SyncEntry
{
    QString duid;
    QString puid;
    bool isWhole = false;    ///< more than a pair of ids
    bool isReplaced = false; ///< holds characters that stand for others, which XML cannot carry
    QHash<QString, QString> texts;
    QByteArray photo; ///< base64

    QString text(const char *element) const { return texts.value(QLatin1String(element)); }
};

/// The synchronisation file as this program reads it: entry by entry, in bounded memory. Its limits are wider than the
/// directory's, so that it understands every file that the directory takes.
class SyncFile
{
public:
    struct Head
    {
        QString device;
        QString id;
        QString created;
        std::optional<int> contacts; ///< on the phone when the export began
    };

    explicit SyncFile(const QString &path);

    /// Opens the file. Answers why not, when that fails. Perhaps only the directory, as another user, can read it.
    std::optional<QString> open();
    /// Hands over all entries. Answers what is wrong with the file, when anything is.
    std::optional<QString> read(const std::function<void(const SyncEntry &)> &take);
    const Head &head() const { return m_head; }

    /// Bytes in the files that belong to `path` while it is being written. These are the files in its folder whose
    /// names hold its name, whatever the unfinished file is called.
    static qint64 bytesWritten(const QString &path);

private:
    bool next();
    void beginElement();
    void takeText();

    QFile m_file;
    QXmlStreamReader m_reader;
    qint64 m_bytesOfToken = 0;
    Head m_head;
    SyncEntry m_entry;
    QString m_element;    ///< of the entry, that is open
    int m_depth = 0;      ///< elements that are open
    int m_entryDepth = 0; ///< of the entry that is open; 0 when none is
};
