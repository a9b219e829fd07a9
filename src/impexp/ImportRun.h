// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/LongWork.h"
#include "platform/impexp/ImpExp_Item.h"
#include "platform/records/ImpExpStatus.h"
#include "src/dao/WorkerDatabase.h"
#include "src/fields/DirectoryFields.h"
#include "src/impexp/ImportErrors.h"
#include "src/impexp/ImportPhotos.h"
#include "src/impexp/ImportWriter.h"

#include <QHash>
#include <QSet>
#include <QStringList>

class ImpExp_XMLParser;

/// One import, from the file to the commit. The file is read twice, first its ids and to its very end, so that
/// nothing is touched for a file that is no good; its contacts are never in memory all at once. It writes through a
/// connection of its own, so that until the commit everybody else reads the store as it was.
class ImportRun
{
public:
    /// What others have to be told.
    struct Outcome
    {
        ImpExpStatus status = ImpExpStatus::Failure;
        QString cause;
        QStringList deletedIds;
        QStringList errors; ///< of single contacts
        QStringList droppedPhotos;
        bool isChanged = false;
    };

    ImportRun(const DirectoryFields &fields, RemoteCaller &telephony, PhotoFiles &photoFiles, LongWork &longWork);

    /// Once. This object must outlive the work.
    Work execute(QString path);
    /// When that is done. With status Failure the store is as it was.
    const Outcome &outcome() const { return m_outcome; }
    bool hasMetDamage() const { return m_dao.connection().isDamaged(); }

private:
    Work apply(QString path);
    Work readPuids();
    Work readIds(QString path, qint64 capacity);
    Work removeUnlisted();
    void remove(const QString &contactId);
    Work weighPhotos(QString path);
    Contact storedContact(const QString &duid);
    Work readContacts(QString path);
    bool takeNext(ImpExp_XMLParser &parser, ImpExp_Item &item);
    void take(const ImpExp_Item &item, const QString &duid);
    void map(const ImpExp_Item &item, const QString &duid);
    void create(const ImpExp_Item &item);
    void update(const ImpExp_Item &item, const QString &duid);
    Outcome success() const;
    Outcome failure(const QString &cause) const;

    WorkerDatabase m_database{WorkerDatabase::Access::Write};
    DaoContact &m_dao;
    const DirectoryFields &m_fields;
    LongWork &m_longWork;
    CanonicalNumbers m_numbers; ///< of its own: a telephony that is silent here is asked by others
    ImportErrors m_errors;
    ImportPhotos m_photos;
    ImportWriter m_writer;

    QHash<QString, QString> m_puids; ///< of the local contacts when the import began
    QSet<QString> m_listed;          ///< ids in the file
    QSet<QString> m_taken;           ///< of these, those that the second pass has met
    qint64 m_itemCount = 0;          ///< in the file; in the second pass those still to come
    QStringList m_deletedIds;
    bool m_isMapped = false;
    Outcome m_outcome;
};
