// SPDX-License-Identifier: Apache-2.0
#include "src/search/LocalSearchThreads.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/LatinText.h"
#include "src/dao/WorkerDatabase.h"

#include <optional>

std::unique_ptr<LocalSearchByNameThread> LocalSearchByNameThread::ahead()
{
    auto thread = std::make_unique<LocalSearchByNameThread>(QString(), QString());
    thread->m_isAhead = true;
    thread->start();
    if (!thread->isRunning())
        thread.reset();
    return thread;
}

void LocalSearchByNameThread::take(const QString &searchText, const QString &searchId)
{
    m_searchText = searchText;
    m_searchId = searchId;
}

bool LocalSearchByNameThread::begin()
{
    m_begun.release();
    return m_isAhead || SearchThread::begin();
}

void LocalSearchByNameThread::dismiss()
{
    m_isWanted = false;
    m_begun.release();
}

void LocalSearchByNameThread::run()
{
    std::optional<WorkerDatabase> database(std::in_place); // closed behind the signals: nobody waits for that
    if (m_isAhead)
        database->contacts().prepareNameSearch();
    m_begun.acquire();
    if (!m_isWanted)
        return;
    if (!database->contacts().connection().database())
        database.emplace(); // what could not be opened then can be now
    KestinLogger::debug("[Thread Local search by name] started for name : [%1]", m_searchText);
    const ListContact contacts =
        database->contacts().getContactsByLatinName(latinText(m_searchText)).value_or(ListContact());
    KestinLogger::debug("[Thread Local search by name] %1 contacts found", contacts.size());
    Q_EMIT signal_addContactsToMap(m_searchId, contacts, true);
    Q_EMIT signal_threadSearchFinished(m_searchId);
    if (database->contacts().connection().isDamaged())
        Q_EMIT signal_storeDamaged();
    KestinLogger::debug("[Thread Local search by name] end");
}

void LocalSearchByPhoneNumberThread::run()
{
    KestinLogger::debug("[Thread Local search by phone number] started");
    WorkerDatabase database; // closed behind the signals: nobody waits for that
    const ListContact contacts = database.contacts().getContactByPhoneNumber(m_searchText).value_or(ListContact());
    if (!contacts.isEmpty())
        Q_EMIT signal_addContactsToMap(m_searchId, contacts, false);
    Q_EMIT signal_threadSearchFinished(m_searchId);
    if (database.contacts().connection().isDamaged())
        Q_EMIT signal_storeDamaged();
    KestinLogger::debug("[Thread Local search by phone number] end");
}

#include "moc_LocalSearchThreads.cpp"
#include "moc_SearchThread.cpp"
