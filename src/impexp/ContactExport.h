// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/LongWork.h"
#include "platform/records/ImpExpStatus.h"
#include "src/fields/DirectoryFields.h"

#include <QObject>

#include <optional>

class DaoContact;
class ImpExp_Item;
class ImpExp_XMLBuilder;

/// Writes the local contacts into a synchronisation file. The store must not be written while an export is going on.
class ContactExport : public QObject
{
    Q_OBJECT

public:
    ContactExport(DaoContact &dao, DirectoryFields &fields, const QString &moduleName, LongWork &longWork);

    /// Does nothing (status NothingToDo) when nothing has changed since the previous export. `full`: whole contacts,
    /// otherwise their ids only. `pageSize`: contacts of a page, 0 or less puts all into a single page. Nothing else
    /// may be going on as long work.
    void exportToXml(const QString &path, int pageSize, bool full, const QString &id, const QString &deviceId,
                     const QDateTime &createdDate, const QDateTime &previousExportDate);

Q_SIGNALS:
    /// On success the file is there; on failure an earlier file is untouched, and `cause` says why.
    void exportFinished(const ImpExpStatus &status, const QString &cause);
    /// At least one contact is not in the file (each has a warning in the log). After exportFinished.
    void contactsNotExported();

private:
    struct Order
    {
        QString path;
        int pageSize;
        bool full;
        QString id;
        QString deviceId;
        QDateTime createdDate;
        QDateTime previousExportDate;
        int contacts;
        int managed; ///< contacts of device management
    };

    bool isUpToDate(int localContacts, const QDateTime &previousExportDate);
    Work write(Order order);
    Work putAll(ImpExp_XMLBuilder &builder, bool full);
    void put(ImpExp_XMLBuilder &builder, const ImpExp_Item &item, const QString &contactId);

    DaoContact &m_dao;
    DirectoryFields &m_fields;
    QString m_moduleName;
    LongWork &m_longWork;
    bool m_skipped = false; ///< a contact of the run that is going on
    std::optional<Work> m_work;
};
