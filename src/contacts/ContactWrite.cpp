// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/ContactWrite.h"

#include "src/dao/Connection.h"
#include "src/dao/DaoContact.h"

#include <utility>

ContactWrite::ContactWrite(DaoContact &dao, ContactNews &news)
    : m_news(news)
    , m_newsBefore(news.m_pending.size())
    , m_outermost(!dao.connection().isInTransaction())
    , m_transaction(dao.connection())
{
}

ContactWrite::~ContactWrite()
{
    if (!m_committed)
        m_news.m_pending.resize(m_newsBefore);
}

void ContactWrite::announcePhotoWanted(const Contact &contact)
{
    if (!contact.photo.isEmpty())
        announce(&ContactNews::photoWanted, contact.contactId, contact.photo);
}

void ContactWrite::announcePhotoDropped(const Contact &contact)
{
    if (!contact.photo.isEmpty())
        announce(&ContactNews::photoDropped, contact.contactId, contact.photo);
}

void ContactWrite::noteChange(DirectoryFields &fields)
{
    m_news.m_pending.append([&fields] { fields.lastLocalChangeDate = QDateTime::currentDateTimeUtc(); });
}

bool ContactWrite::commit()
{
    if (!m_transaction.commit())
        return false;
    tell();
    return true;
}

void ContactWrite::tell()
{
    m_committed = true;
    if (!m_outermost)
        return;
    // Taken out first: whoever is told may write again.
    const auto pending = std::exchange(m_news.m_pending, {});
    for (const auto &tellOne : pending)
        tellOne();
}
