// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/LongWork.h"
#include "platform/records/ImpExpStatus.h"
#include "src/fields/DirectoryFields.h"

#include <QObject>
#include <QStringList>

#include <optional>

class DaoContact;
class PhotoFiles;
class RemoteCaller;

/// Makes the local contacts match a synchronisation file: those that it does not list go, those without an id of the
/// phone are created, the others updated. All or nothing, but for single contacts that are no good. Works in read-only
/// mode too, for that is what the mode is for. While an import is going on the store can be read as it was before; it
/// must not be written.
class ContactImport : public QObject
{
    Q_OBJECT

public:
    /// `dao` is what others read; `telephony` reaches the telephony service.
    ContactImport(DaoContact &dao, DirectoryFields &fields, RemoteCaller &telephony, PhotoFiles &photoFiles,
                  LongWork &longWork);

    /// Refused (nothing is told) while another import runs. Nothing else may be going on as long work.
    void importFromXml(const QString &path);

Q_SIGNALS:
    // In this order, when the import is over.

    /// A photo file that may go, unless a contact names it still.
    void photoDropped(const QString &path);
    /// `cause`: why it failed, or with success the errors of single contacts, each on a line of its own.
    void importFinished(const ImpExpStatus &status, const QString &cause);
    void contactsDeleted(const QString &reqId, const QStringList &contactIds);
    void contactNotImported(const QString &text);
    void contentChanged();

private:
    Work run(QString path);

    DaoContact &m_dao;
    DirectoryFields &m_fields;
    RemoteCaller &m_telephony;
    PhotoFiles &m_photoFiles;
    LongWork &m_longWork;
    std::optional<Work> m_work;
};
