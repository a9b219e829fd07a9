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
    const Details *details = m_known.object(contactId);
    if (details && !details->isOld)
        return *details;
    if (!m_underWay.contains(contactId)) {
        m_waiting.removeOne(contactId);
        m_waiting.append(contactId);
        if (m_waiting.size() > waitingAtMost)
            m_waiting.removeFirst();
        askNext();
    }
    return details ? *details : Details();
}

void RowDetails::forget(const QString &contactId)
{
    if (Details *details = m_known.object(contactId))
        details->isOld = true;
    m_underWay.remove(contactId);
}

void RowDetails::forgetAll()
{
    const QStringList ids = m_known.keys();
    for (const QString &id : ids)
        m_known.object(id)->isOld = true;
    m_waiting.clear();
    m_underWay.clear();
}

void RowDetails::askNext()
{
    if (m_waiting.isEmpty() || m_unanswered >= underWayAtMost)
        return;
    const QString id = m_waiting.takeLast();
    m_underWay.insert(id, ++m_asked);
    ++m_unanswered;
    m_calls.ask<ListContact>(this, ModuleName::directory, "getContactById", {id},
                             [this, id, number = m_asked](const std::optional<ListContact> &contacts) {
                                 --m_unanswered;
                                 if (m_underWay.value(id) == number) {
                                     m_underWay.remove(id);
                                     if (contacts) { // else they are asked for when they are looked at again
                                         const Contact contact = contacts->value(0);
                                         m_known.insert(id, new Details{ContactPhoto::imageUrl(contact),
                                                                        contact.misc.value(QStringLiteral("company")),
                                                                        false});
                                         Q_EMIT known(id);
                                     }
                                 }
                                 askNext();
                             });
}

#include "moc_RowDetails.cpp"
