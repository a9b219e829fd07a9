// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDateTime>
#include <QMap>
#include <QString>

/// What several use cases of the directory share: its settings as read, and its state. Owned by the module object,
/// given to each use case by reference.
struct DirectoryFields
{
    static constexpr qint32 fullList = 1;     ///< searchMode: all results in one list
    static constexpr qint32 perDirectory = 2; ///< searchMode: the phone's results, then the company's

    qint32 maxContacts = 0;          ///< capacity of local contacts
    bool maxContactsChanged = false; ///< since the last export
    qint32 maxWordSearch = 0;
    qint32 searchMode = 0;
    bool removeHttpsFromPhotoUrl = false; ///< photo addresses of search results are rewritten to plain http
    bool icsLogin = false;                ///< the remote directory may be used
    qint32 comLogSize = 0;                ///< capacity of cached contacts
    QString photoDirectory;               ///< ends with a slash
    qint32 fileDiskUserQuota = 0;         ///< bytes that photo files may take
    bool readOnlyMode = false;            ///< a synchronisation owner holds the directory
    bool importOngoing = false;
    QDateTime lastLocalChangeDate; ///< UTC
    QMap<qint32, QString> popupTexts;

    void noteLocalChange() { lastLocalChangeDate = QDateTime::currentDateTimeUtc(); }
};
