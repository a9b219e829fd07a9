// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/ImpExpStatus.h"
#include "src/fields/DirectoryFields.h"

#include <QObject>
#include <QStringList>

class CanonicalNumbers;
class DaoContact;
class PhotoFiles;

/// Makes the local contacts match a synchronisation file: those that it does not list go, those without an id of the
/// phone are created, the others updated. All or nothing, but for single contacts that are no good. Works in read-only
/// mode too, for that is what the mode is for.
class ContactImport : public QObject
{
    Q_OBJECT

public:
    ContactImport(DaoContact &dao, DirectoryFields &fields, CanonicalNumbers &numbers, PhotoFiles &photoFiles);

    /// Refused (nothing is told) while another import runs.
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
    DaoContact &m_dao;
    DirectoryFields &m_fields;
    CanonicalNumbers &m_numbers;
    PhotoFiles &m_photoFiles;
};
