// SPDX-License-Identifier: Apache-2.0
#include "src/directory/DirectoryEvent.h"

DirectoryEvent::DirectoryEvent(const QString &name)
{
    m_event.setEvtName(name);
}

template <typename T>
DirectoryEvent &DirectoryEvent::with(const char *name, const T &value)
{
    m_event.addArgument(QVariant::fromValue(value), QLatin1String(name), true);
    return *this;
}

DirectoryEvent DirectoryEvent::contactsCreated(const QString &reqId, const ListContact &contacts)
{
    return DirectoryEvent(QStringLiteral("DIR_CONTACTS_CREATED")).with("reqId", reqId).with("contacts", contacts);
}

DirectoryEvent DirectoryEvent::contactsUpdated(const QString &reqId, const ListContact &contacts,
                                               bool onlyPhotoHasChanged)
{
    return DirectoryEvent(QStringLiteral("DIR_CONTACTS_UPDATED"))
        .with("reqId", reqId)
        .with("contacts", contacts)
        .with("onlyPhotoHasChanged", onlyPhotoHasChanged);
}

DirectoryEvent DirectoryEvent::contactsDeleted(const QString &reqId, const QStringList &contactIds)
{
    return DirectoryEvent(QStringLiteral("DIR_CONTACTS_DELETED")).with("reqId", reqId).with("contactIds", contactIds);
}

DirectoryEvent DirectoryEvent::previewCreated(const QString &reqId, const ListContact &contacts)
{
    return DirectoryEvent(QStringLiteral("DIR_CONTACTSINPREVIEW_CREATED"))
        .with("reqId", reqId)
        .with("contacts", contacts);
}

DirectoryEvent DirectoryEvent::previewDeleted(const QString &reqId, const ListContact &contacts, bool requestedByUser)
{
    return DirectoryEvent(QStringLiteral("DIR_CONTACTSINPREVIEW_DELETED"))
        .with("reqId", reqId)
        .with("contacts", contacts)
        .with("requestedByUser", requestedByUser);
}

DirectoryEvent DirectoryEvent::databaseFull()
{
    return DirectoryEvent(QStringLiteral("DIR_CONTACT_DB_FULL"));
}

DirectoryEvent DirectoryEvent::contentChanged()
{
    return DirectoryEvent(QStringLiteral("DIR_CONTENT_CHANGED"));
}

DirectoryEvent DirectoryEvent::searchResults(const QString &searchId, int nbResults,
                                             const ListContactSummary &summaries)
{
    return DirectoryEvent(QStringLiteral("DIR_SEARCH_RESULTS"))
        .with("searchId", searchId)
        .with("nbResults", nbResults)
        .with("listContactSummary", summaries);
}

DirectoryEvent DirectoryEvent::searchCompletedByName(const QString &searchId, int nbResults,
                                                     const ListContactSummary &summaries)
{
    return DirectoryEvent(QStringLiteral("DIR_SEARCH_COMPLETED_BY_NAME"))
        .with("searchId", searchId)
        .with("nbResults", nbResults)
        .with("listContactSummary", summaries);
}

DirectoryEvent DirectoryEvent::searchCompletedByPhoneNumber(const QString &searchId, const Contact &contact)
{
    return DirectoryEvent(QStringLiteral("DIR_SEARCH_COMPLETED_BY_PHONE_NUMBER"))
        .with("searchId", searchId)
        .with("contact", contact);
}

DirectoryEvent DirectoryEvent::imAddressResult(const QString &contactId, const QString &imAddress)
{
    return DirectoryEvent(QStringLiteral("DIR_IM_ADDRESS_RESULT"))
        .with("contactId", contactId)
        .with("imAddress", imAddress);
}

DirectoryEvent DirectoryEvent::userPhotoChanged(const QString &fileName)
{
    return DirectoryEvent(QStringLiteral("userPhotoChanged")).with("fileName", fileName);
}

DirectoryEvent DirectoryEvent::importFinished(const ImpExpStatus &status, const QString &cause)
{
    return finished(QStringLiteral("ImportFinishedEvt"), status, cause);
}

DirectoryEvent DirectoryEvent::exportFinished(const ImpExpStatus &status, const QString &cause)
{
    return finished(QStringLiteral("ExportFinishedEvt"), status, cause);
}

DirectoryEvent DirectoryEvent::finished(const QString &name, const ImpExpStatus &status, const QString &cause)
{
    DirectoryEvent event(name);
    event.with("status", status).with("cause", cause);
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
