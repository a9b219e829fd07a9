// SPDX-License-Identifier: Apache-2.0
#include "src/directory/NewsPublication.h"

#include "src/directory/UseCases.h"

#include <utility>

NewsPublication::NewsPublication(UseCases &useCases, const DirectoryFields &fields, KestinModule &module,
                                 Popups &popups)
    : m_fields(fields)
    , m_module(module)
    , m_popups(popups)
{
    publishContacts(useCases);
    publishSearches(useCases);
    publishImAddresses(useCases);
    publishPhotos(useCases);
    publishSynchronisation(useCases);
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
    publish(useCases.lookup, &ContactLookup::imAddressFound, &DirectoryEvent::imAddressResult);
}

void NewsPublication::publishPhotos(UseCases &useCases)
{
    const auto contactsUpdated = [this](const ListContact &contacts, bool onlyPhotoHasChanged) {
        DirectoryEvent::contactsUpdated(QString(), contacts, onlyPhotoHasChanged).send(m_module);
    };
    connect(&useCases.contactPhotos, &ContactPhotos::contactsUpdated, this, contactsUpdated);
    connect(&useCases.photoResizing, &PhotoResizing::contactsUpdated, this, contactsUpdated);
    connect(&useCases.photoFiles, &PhotoFiles::quotaExceeded, this, &NewsPublication::tellQuotaExceeded);
    publish(useCases.userPhoto, &UserPhoto::userPhotoChanged, &DirectoryEvent::userPhotoChanged);
}

/// An import tells it once: thousands of its photos may not fit.
void NewsPublication::tellQuotaExceeded()
{
    if (!m_fields.importOngoing || !std::exchange(m_isQuotaTold, true))
        m_popups.showPopupContactsPhotosTotalSizeExceeded();
}

void NewsPublication::publishSynchronisation(UseCases &useCases)
{
    ContactImport &import = useCases.contactImport;
    connect(&import, &ContactImport::importFinished, this, [this] { m_isQuotaTold = false; });
    publish(import, &ContactImport::importFinished, &DirectoryEvent::importFinished);
    publish(import, &ContactImport::contactsDeleted, &DirectoryEvent::contactsDeleted);
    publish(import, &ContactImport::contentChanged, &DirectoryEvent::contentChanged);
    connect(&import, &ContactImport::contactNotImported, this,
            [this](const QString &text) { m_popups.showPopupContactFailureDuringSynchronization(text); });
    ContactExport &exporter = useCases.contactExport;
    publish(exporter, &ContactExport::exportFinished, &DirectoryEvent::exportFinished);
    connect(&exporter, &ContactExport::contactsNotExported, this,
            [this] { m_popups.showPopupContactFailureDuringSynchronization(); });
}
