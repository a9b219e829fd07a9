// SPDX-License-Identifier: Apache-2.0
#include "src/directory/DirectoryEvent.h"

#include "platform/framework/KestinLogger.h"
#include "platform/framework/KestinModule.h"
#include "platform/records/PlatformEvents.h"

DirectoryEvent::DirectoryEvent(const QString &name)
{
    m_event.setEvtName(name);
}

template <typename T>
DirectoryEvent &DirectoryEvent::with(QLatin1String name, const T &value)
{
    m_event.addArgument(QVariant::fromValue(value), name, true);
    return *this;
}

DirectoryEvent DirectoryEvent::contactsCreated(const QString &reqId, const ListContact &contacts)
{
    return DirectoryEvent(EventName::contactsCreated)
        .with(ArgumentName::reqId, reqId)
        .with(ArgumentName::contacts, contacts);
}

DirectoryEvent DirectoryEvent::contactsUpdated(const QString &reqId, const ListContact &contacts,
                                               bool onlyPhotoHasChanged)
{
    return DirectoryEvent(EventName::contactsUpdated)
        .with(ArgumentName::reqId, reqId)
        .with(ArgumentName::contacts, contacts)
        .with(ArgumentName::onlyPhotoHasChanged, onlyPhotoHasChanged);
}

DirectoryEvent DirectoryEvent::contactsDeleted(const QString &reqId, const QStringList &contactIds)
{
    return DirectoryEvent(EventName::contactsDeleted)
        .with(ArgumentName::reqId, reqId)
        .with(ArgumentName::contactIds, contactIds);
}

DirectoryEvent DirectoryEvent::previewCreated(const QString &reqId, const ListContact &contacts)
{
    return DirectoryEvent(EventName::previewCreated)
        .with(ArgumentName::reqId, reqId)
        .with(ArgumentName::contacts, contacts);
}

DirectoryEvent DirectoryEvent::previewDeleted(const QString &reqId, const ListContact &contacts, bool requestedByUser)
{
    return DirectoryEvent(EventName::previewDeleted)
        .with(ArgumentName::reqId, reqId)
        .with(ArgumentName::contacts, contacts)
        .with(ArgumentName::requestedByUser, requestedByUser);
}

DirectoryEvent DirectoryEvent::databaseFull()
{
    return DirectoryEvent(EventName::databaseFull);
}

DirectoryEvent DirectoryEvent::contentChanged()
{
    return DirectoryEvent(EventName::contentChanged);
}

DirectoryEvent DirectoryEvent::searchResults(const QString &searchId, int nbResults,
                                             const ListContactSummary &summaries)
{
    return DirectoryEvent(EventName::searchResults)
        .with(ArgumentName::searchId, searchId)
        .with(ArgumentName::nbResults, nbResults)
        .with(ArgumentName::listContactSummary, summaries);
}

DirectoryEvent DirectoryEvent::searchCompletedByName(const QString &searchId, int nbResults,
                                                     const ListContactSummary &summaries)
{
    return DirectoryEvent(EventName::searchCompletedByName)
        .with(ArgumentName::searchId, searchId)
        .with(ArgumentName::nbResults, nbResults)
        .with(ArgumentName::listContactSummary, summaries);
}

DirectoryEvent DirectoryEvent::searchCompletedByPhoneNumber(const QString &searchId, const Contact &contact)
{
    return DirectoryEvent(EventName::searchCompletedByPhoneNumber)
        .with(ArgumentName::searchId, searchId)
        .with(ArgumentName::contact, contact);
}

DirectoryEvent DirectoryEvent::imAddressResult(const QString &contactId, const QString &imAddress)
{
    return DirectoryEvent(EventName::imAddressResult)
        .with(ArgumentName::contactId, contactId)
        .with(ArgumentName::imAddress, imAddress);
}

DirectoryEvent DirectoryEvent::userPhotoChanged(const QString &fileName)
{
    return DirectoryEvent(EventName::userPhotoChanged).with(ArgumentName::fileName, fileName);
}

DirectoryEvent DirectoryEvent::importFinished(const ImpExpStatus &status, const QString &cause)
{
    return finished(EventName::importFinished, status, cause);
}

DirectoryEvent DirectoryEvent::exportFinished(const ImpExpStatus &status, const QString &cause)
{
    return finished(EventName::exportFinished, status, cause);
}

DirectoryEvent DirectoryEvent::finished(const QString &name, const ImpExpStatus &status, const QString &cause)
{
    DirectoryEvent event(name);
    event.with(ArgumentName::status, status).with(ArgumentName::cause, cause);
    event.m_details = Details{QStringLiteral("status:") + status.toString(), cause};
    return event;
}

QList<DirectoryEvent::Brief> DirectoryEvent::briefs() const
{
    const ListEventArgument &arguments = m_event.arguments();
    const QVariant found = arguments.isEmpty() ? QVariant() : arguments.last().value;
    if (found.metaType() == QMetaType::fromType<ListContactSummary>())
        return {{endingWith(QVariant::fromValue(ListContactSummary())), QStringLiteral("without its summaries")}};
    if (found.metaType() != QMetaType::fromType<Contact>())
        return {};
    Contact summary;
    static_cast<ContactSummary &>(summary) = found.value<Contact>();
    return {{endingWith(QVariant::fromValue(summary)), QStringLiteral("with the summary of its contact")},
            {endingWith(QVariant::fromValue(Contact())), QStringLiteral("with an empty contact")}};
}

KestinEvent DirectoryEvent::endingWith(const QVariant &value) const
{
    ListEventArgument arguments = m_event.arguments();
    arguments.last().value = value;
    return KestinEvent(m_event.getEvtName(), arguments);
}

bool DirectoryEvent::sendBrief(KestinModule &module) const
{
    for (const Brief &brief : briefs()) {
        if (!module.notifyEvent(brief.event))
            continue;
        KestinLogger::warning("event %1 is sent %2: all of it is more than the bus carries", brief.event.getEvtName(),
                              brief.with);
        return true;
    }
    return false;
}

void DirectoryEvent::send(KestinModule &module) const
{
    const QString name = m_event.getEvtName();
    const bool sent = module.notifyEvent(m_event) || sendBrief(module);
    const KestinLogger::Level level = sent ? KestinLogger::Debug : KestinLogger::Error;
    if (m_details)
        KestinLogger::log(level, sent ? "event %1 sent %2\n%3" : "event %1 notification failed %2\n%3", name,
                          m_details->status, m_details->cause);
    else
        KestinLogger::log(level, sent ? "event %1 sent " : "event %1 notification failed ", name);
}
