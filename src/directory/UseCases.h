// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"
#include "src/contacts/ContactCreation.h"
#include "src/contacts/ContactDeletion.h"
#include "src/contacts/ContactLookup.h"
#include "src/contacts/ContactModification.h"
#include "src/contacts/ContactNews.h"
#include "src/contacts/ContactPreview.h"
#include "src/contacts/DefaultContacts.h"
#include "src/contacts/LatinNames.h"
#include "src/dao/DaoContact.h"
#include "src/fields/DirectoryFields.h"
#include "src/impexp/ContactExport.h"
#include "src/impexp/ContactImport.h"
#include "src/numbers/CanonicalNumbers.h"
#include "src/numbers/DialingRuleCopies.h"
#include "src/numbers/StoredNumbers.h"
#include "src/photo/ContactPhotos.h"
#include "src/photo/KestinDirectoryNetwork.h"
#include "src/photo/PhotoDownloads.h"
#include "src/photo/PhotoResizing.h"
#include "src/photo/UserPhoto.h"
#include "src/photofiles/PhotoFiles.h"
#include "src/photofiles/PictureProgram.h"
#include "src/remote/RemoteContacts.h"
#include "src/remote/RemoteDirectory.h"
#include "src/remote/SearchCalls.h"
#include "src/remote/ServiceRight.h"
#include "src/remote/WebServiceEvents.h"
#include "src/search/ContactSearch.h"

class Connection;
class ModuleWatch;

/// The collaborators that work on the open store, each made with exactly what it needs, and what one tells another.
/// Made at init, when the tables are there; destroyed before the database.
struct UseCases
{
    UseCases(Connection &connection, RemoteCaller &caller, RemoteCaller &settingsCaller, DirectoryFields &fields,
             const QString &moduleName);

    DaoContact dao;
    ContactNews news;
    CanonicalNumbers numbers;
    StoredNumbers storedNumbers;
    DialingRuleCopies dialingRules;
    LatinNames latinNames;
    ContactDeletion deletion;
    ContactCreation creation;
    ContactModification modification;
    ContactPreview preview;
    DefaultContacts defaultContacts;
    ContactLookup lookup;
    ContactSearch search;
    RemoteDirectory remoteDirectory;
    RemoteContacts remoteContacts;
    SearchCalls searchCalls;
    ServiceRight serviceRight;
    WebServiceEvents webServiceEvents;
    KestinDirectoryNetwork network;
    PictureProgram pictures;
    PhotoFiles photoFiles;
    PhotoResizing photoResizing;
    ContactPhotos contactPhotos;
    UserPhoto userPhoto;
    PhotoDownloads photoDownloads;
    ContactExport contactExport;
    ContactImport contactImport;

    /// What the company directory's leaving and coming means; the watch must not outlive this object.
    void followCompanyDirectory(const ModuleWatch &manager);

private:
    void connectPhotos();
    void connectCompanyDirectory();
};
