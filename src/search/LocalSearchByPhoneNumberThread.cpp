// SPDX-License-Identifier: Apache-2.0
#include "src/search/LocalSearchByPhoneNumberThread.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/WorkerDatabase.h"

void LocalSearchByPhoneNumberThread::run()
{
    KestinLogger::debug("[Thread Local search by phone number] started");
    WorkerDatabase database; // closed behind the signals: nobody waits for that
    const ListContact contacts = database.contacts().getContactByPhoneNumber(m_searchText).value_or(ListContact());
    if (!contacts.isEmpty())
        Q_EMIT signal_addContactsToMap(m_searchId, contacts, false);
    Q_EMIT signal_threadSearchFinished(m_searchId);
    KestinLogger::debug("[Thread Local search by phone number] end");
}
