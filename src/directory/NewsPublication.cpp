// SPDX-License-Identifier: Apache-2.0
#include "src/directory/NewsPublication.h"

#include "src/directory/OpenDirectory.h"

#include <utility>

NewsPublication::NewsPublication(OpenDirectory &open, const DirectoryFields &fields, KestinModule &module,
                                 Popups &popups)
    : m_fields(fields)
    , m_module(module)
    , m_popups(popups)
{
    publishContacts(open);
    publishSearches(open);
    publishImAddresses(open);
    publishPhotos(open);
    publishSynchronisation(open);
}

void NewsPublication::publishContacts(OpenDirectory &open)
{
    ContactNews &news = open.contacts.news;
    publish(news, &ContactNews::contactsCreated, &DirectoryEvent::contactsCreated);
    publish(news, &ContactNews::contactsUpdated, &DirectoryEvent::contactsUpdated);
    publish(news, &ContactNews::contactsDeleted, &DirectoryEvent::contactsDeleted);
    publish(news, &ContactNews::previewCreated, &DirectoryEvent::previewCreated);
    publish(news, &ContactNews::previewDeleted, &DirectoryEvent::previewDeleted);
    publish(news, &ContactNews::databaseFull, &DirectoryEvent::databaseFull);
    connect(&news, &ContactNews::anonymousContactRefused, this,
            [this] { m_popups.showPopupCreatingAnonymousContactImpossible(); });
}

void NewsPublication::publishSearches(OpenDirectory &open)
{
    ContactSearch &search = open.search;
    publish(search, &ContactSearch::searchResults, &DirectoryEvent::searchResults);
    publish(search, &ContactSearch::completedByName, &DirectoryEvent::searchCompletedByName);
    publish(search, &ContactSearch::completedByPhoneNumber, &DirectoryEvent::searchCompletedByPhoneNumber);
}

void NewsPublication::publishImAddresses(OpenDirectory &open)
{
    publish(open.company.events, &WebServiceEvents::imAddressReceived, &DirectoryEvent::imAddressResult);
    publish(open.contacts.lookup, &ContactLookup::imAddressFound, &DirectoryEvent::imAddressResult);
}

void NewsPublication::publishPhotos(OpenDirectory &open)
{
    const auto contactsUpdated = [this](const ListContact &contacts, bool onlyPhotoHasChanged) {
        DirectoryEvent::contactsUpdated(QString(), contacts, onlyPhotoHasChanged).send(m_module);
    };
    connect(&open.photos.ofContacts, &ContactPhotos::contactsUpdated, this, contactsUpdated);
    connect(&open.photos.resizing, &PhotoResizing::contactsUpdated, this, contactsUpdated);
    connect(&open.photoFiles, &PhotoFiles::quotaExceeded, this, &NewsPublication::tellQuotaExceeded);
    publish(open.photos.ofUser, &UserPhoto::userPhotoChanged, &DirectoryEvent::userPhotoChanged);
}

/// An import tells it once: thousands of its photos may not fit.
void NewsPublication::tellQuotaExceeded()
{
    if (!m_fields.importOngoing || !std::exchange(m_isQuotaTold, true))
        m_popups.showPopupContactsPhotosTotalSizeExceeded();
}

void NewsPublication::publishSynchronisation(OpenDirectory &open)
{
    ContactImport &import = open.synchronisation.importer;
    connect(&import, &ContactImport::importFinished, this, [this] { m_isQuotaTold = false; });
    publish(import, &ContactImport::importFinished, &DirectoryEvent::importFinished);
    publish(import, &ContactImport::contactsDeleted, &DirectoryEvent::contactsDeleted);
    publish(import, &ContactImport::contentChanged, &DirectoryEvent::contentChanged);
    connect(&import, &ContactImport::contactNotImported, this,
            [this](const QString &text) { m_popups.showPopupContactFailureDuringSynchronization(text); });
    ContactExport &exporter = open.synchronisation.exporter;
    publish(exporter, &ContactExport::exportFinished, &DirectoryEvent::exportFinished);
    connect(&exporter, &ContactExport::contactsNotExported, this,
            [this] { m_popups.showPopupContactFailureDuringSynchronization(); });
}

#include "moc_NewsPublication.cpp"
