// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/contacts/ContactNews.h"
#include "src/fields/DirectoryFields.h"

#include <QStringList>

class DaoContact;

/// Puts contacts into the preview list and takes them out. Answers are ResultCodes.
class ContactPreview
{
public:
    ContactPreview(DaoContact &dao, const DirectoryFields &fields, ContactNews &news);

    int addContactToPreview(const QString &reqId, const QString &idContact);
    /// A manager/assistant contact stays.
    int removeContactFromPreview(const QString &reqId, const QString &idContact);
    /// All of them in one statement, without looking at each.
    int updateContactsPreview(const QString &reqId, const QStringList &contactsIds, bool isPreviewed);

private:
    DaoContact &m_dao;
    const DirectoryFields &m_fields;
    ContactNews &m_news;
};
