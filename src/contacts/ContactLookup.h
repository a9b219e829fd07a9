// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/SpareMemory.h"
#include "platform/records/Contact.h"

#include <QObject>

class DaoContact;

/// Finds stored contacts. A contact that is not there, or a failure of the database, is an empty list.
class ContactLookup : public QObject
{
    Q_OBJECT

public:
    explicit ContactLookup(DaoContact &dao)
        : m_dao(dao)
    {
    }

    /// A list of at most one contact.
    ListContact getContactById(const QString &idContact);
    ListContact getContactsByType(int type);
    /// By number, in canonical form.
    ListContact getLocalContacts(const QString &contactPhoneNumber);
    /// A page by id, ordered within itself; the bounds as DaoContact::getAllContact takes them.
    ListContact getLocalContacts(int startInd, int length);
    ListContact getAllContactsInPreview(int startInd, int length);
    ListContact getLocalContactByEmailAddress(const QString &emailAddress);
    ListContact getLocalContactByIMAddress(const QString &imAddress);
    ListContact getContactToMerge(const QString &imAddress, const QString &phoneNumber, const QString &extentionPhone);

    /// A coarse class of the id, not the stored type: Remote for an id ending with "##", Local for the id of any
    /// stored contact, Other for any other.
    int getContactTypeById(const QString &contactId);

    /// Answered by one of the signals, before it returns.
    void getImAddressByContactId(const QString &idContact);

Q_SIGNALS:
    /// Of a stored contact; it may have none.
    void imAddressFound(const QString &contactId, const QString &imAddress);
    void imAddressNotStored(const QString &contactId);

private:
    DaoContact &m_dao;
    SpareMemory m_spareMemory;
};
