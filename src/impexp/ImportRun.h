// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_Item.h"
#include "platform/records/ImpExpStatus.h"
#include "src/fields/DirectoryFields.h"
#include "src/impexp/ImportErrors.h"
#include "src/impexp/ImportPhotos.h"
#include "src/impexp/ImportWriter.h"

#include <QHash>
#include <QSet>
#include <QStringList>

class DaoContact;
class ImpExp_XMLParser;

/// One import, from the file to the commit. The file is read twice, first its ids and to its very end, so that
/// nothing is touched for a file that is no good; its contacts are never in memory all at once.
class ImportRun
{
public:
    /// What others have to be told.
    struct Outcome
    {
        ImpExpStatus status;
        QString cause;
        QStringList deletedIds;
        QStringList errors; ///< of single contacts
        QStringList droppedPhotos;
        bool isChanged = false;
    };

    ImportRun(DaoContact &dao, const DirectoryFields &fields, CanonicalNumbers &numbers, PhotoFiles &photoFiles);

    /// Once. With status Failure the store is as it was.
    Outcome execute(const QString &path);

private:
    bool readIds(const QString &path);
    void removeUnlisted();
    void remove(const QString &contactId);
    void weighPhotos(const QString &path);
    Contact storedContact(const QString &duid);
    void readContacts(const QString &path);
    bool takeNext(ImpExp_XMLParser &parser, ImpExp_Item &item);
    void take(const ImpExp_Item &item, const QString &duid);
    void map(const ImpExp_Item &item, const QString &duid);
    void create(const ImpExp_Item &item);
    void update(const ImpExp_Item &item, const QString &duid);
    Outcome success() const;
    Outcome failure(const QString &cause) const;

    DaoContact &m_dao;
    const DirectoryFields &m_fields;
    ImportErrors m_errors;
    ImportPhotos m_photos;
    ImportWriter m_writer;

    QHash<QString, QString> m_puids; ///< of the local contacts when the import began
    QSet<QString> m_listed;          ///< ids in the file
    QSet<QString> m_taken;           ///< of these, those that the second pass has met
    qint64 m_itemCount = 0;          ///< in the file; in the second pass those still to come
    QStringList m_deletedIds;
    bool m_isMapped = false;
};
