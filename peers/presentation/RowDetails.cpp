// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/RowDetails.h"

#include "peers/presentation/ContactPhoto.h"
#include "platform/records/KestinBus.h"

RowDetails::RowDetails(ModuleCalls &calls)
    : m_calls(calls)
{
}

RowDetails::Details RowDetails::of(const QString &contactId)
{
    if (const Details *details = m_known.object(contactId))
        return *details;
    if (!m_underWay.contains(contactId)) {
        m_waiting.removeOne(contactId);
        m_waiting.append(contactId);
        if (m_waiting.size() > waitingAtMost)
            m_waiting.removeFirst();
        askNext();
    }
    return {};
}

void RowDetails::forget(const QString &contactId)
{
    m_known.remove(contactId);
    m_underWay.removeOne(contactId); // what is on its way may be the old state
}

void RowDetails::forgetAll()
{
    m_known.clear();
    m_waiting.clear();
    m_underWay.clear();
}

void RowDetails::askNext()
{
    if (m_waiting.isEmpty() || m_underWay.size() >= underWayAtMost)
        return;
    const QString id = m_waiting.takeLast();
    m_underWay.append(id);
    m_calls.ask<ListContact>(this, ModuleName::directory, "getContactById", {id},
                             [this, id](const std::optional<ListContact> &contacts) {
                                 if (m_underWay.removeOne(id)) {
                                     auto *details = new Details;
                                     if (contacts && !contacts->isEmpty())
                                         *details = {ContactPhoto::imageUrl(contacts->first()),
                                                     contacts->first().misc.value(QStringLiteral("company"))};
                                     m_known.insert(id, details);
                                     Q_EMIT known(id);
                                 }
                                 askNext();
                             });
}
