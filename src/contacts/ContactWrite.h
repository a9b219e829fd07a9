// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinLogger.h"
#include "src/contacts/ContactNews.h"
#include "src/dao/Transaction.h"
#include "src/fields/DirectoryFields.h"

class DaoContact;

/// One write that a caller asked for: a transaction, and the news of it. Unless committed, nothing was written and
/// nothing is told. One inside another is part of it: its news wait for the outermost commit.
class ContactWrite
{
public:
    ContactWrite(DaoContact &dao, ContactNews &news);
    ~ContactWrite();
    ContactWrite(const ContactWrite &) = delete;
    ContactWrite &operator=(const ContactWrite &) = delete;

    /// False when it could not be begun: nothing must be written under it.
    bool isActive() const { return m_transaction.isActive(); }

    /// Emits the signal of ContactNews with these arguments once the write is durable.
    template <typename Signal, typename... Arguments>
    void announce(Signal signal, const Arguments &...arguments)
    {
        ContactNews &news = m_news;
        news.m_pending.append([&news, signal, arguments...] { Q_EMIT(news.*signal)(arguments...); });
    }

    /// Logs it at debug level once the write is durable, in its order among the news.
    template <typename... Arguments>
    void logDone(const char *text, const Arguments &...arguments)
    {
        m_news.m_pending.append([text, arguments...] { KestinLogger::debug(text, arguments...); });
    }

    /// Tells that a contact has, or had until now, this photo; nothing to tell when it is empty.
    void announcePhotoWanted(const Contact &contact);
    void announcePhotoDropped(const Contact &contact);

    /// Sets the time of the last change once the write is durable.
    void noteChange(DirectoryFields &fields);

    /// Ends the write, and tells its news when it is the outermost. False when it is undone (logged).
    bool commit();
    /// Tells the news of a write that could not be begun, where what was done is durable without it.
    void tell();

private:
    ContactNews &m_news;
    qsizetype m_newsBefore;
    bool m_outermost;
    bool m_committed = false;
    Transaction m_transaction;
};
