// SPDX-License-Identifier: Apache-2.0
#include "src/directory/NewsPublication.h"

#include "src/directory/UseCases.h"

NewsPublication::NewsPublication(UseCases &useCases, EventPublisher &publisher, Popups &popups)
    : m_publisher(publisher)
    , m_popups(popups)
{
    publishContacts(useCases);
    publishSearches(useCases);
    publishImAddresses(useCases);
}

void NewsPublication::publishContacts(UseCases &useCases)
{
    ContactNews &news = useCases.news;
    publish(news, &ContactNews::contactsCreated, &DirectoryEvent::contactsCreated);
    publish(news, &ContactNews::contactsUpdated, &DirectoryEvent::contactsUpdated);
    publish(news, &ContactNews::contactsDeleted, &DirectoryEvent::contactsDeleted);
    publish(news, &ContactNews::previewCreated, &DirectoryEvent::previewCreated);
    publish(news, &ContactNews::previewDeleted, &DirectoryEvent::previewDeleted);
    publish(news, &ContactNews::databaseFull, &DirectoryEvent::databaseFull);
    connect(&news, &ContactNews::anonymousContactRefused, this,
            [this] { m_popups.showPopupCreatingAnonymousContactImpossible(); });
}

void NewsPublication::publishSearches(UseCases &useCases)
{
    ContactSearch &search = useCases.search;
    publish(search, &ContactSearch::searchResults, &DirectoryEvent::searchResults);
    publish(search, &ContactSearch::completedByName, &DirectoryEvent::searchCompletedByName);
    publish(search, &ContactSearch::completedByPhoneNumber, &DirectoryEvent::searchCompletedByPhoneNumber);
}

void NewsPublication::publishImAddresses(UseCases &useCases)
{
    publish(useCases.webServiceEvents, &WebServiceEvents::imAddressReceived, &DirectoryEvent::imAddressResult);
    publish(useCases.remoteContacts, &RemoteContacts::imAddressFound, &DirectoryEvent::imAddressResult);
}
