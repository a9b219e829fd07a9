// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/contacts/Contacts.h"
#include "src/dao/DaoContact.h"
#include "src/impexp/Synchronisation.h"
#include "src/numbers/Numbers.h"
#include "src/photo/Photos.h"
#include "src/photofiles/PhotoFiles.h"
#include "src/remote/CompanyDirectory.h"
#include "src/search/ContactSearch.h"

class Connection;
class ModuleWatch;

/// The directory while its store is open: what each folder does, and what crosses folders. Made at init, when the
/// tables are there; destroyed before the database.
struct OpenDirectory
{
    /// `settings` reaches the settings manager, `caller` the others.
    OpenDirectory(Connection &connection, RemoteCaller &caller, RemoteCaller &settings, DirectoryFields &fields,
                  const QString &moduleName, LongWork &longWork);

    DaoContact dao;
    PhotoFiles photoFiles;
    Numbers numbers;
    Contacts contacts;
    ContactSearch search;
    CompanyDirectory company;
    Photos photos;
    Synchronisation synchronisation;

    /// What the company directory's leaving and coming means; the watch must not outlive this object.
    void followCompanyDirectory(const ModuleWatch &manager);

private:
    void connectPhotos();
    void connectCompanyDirectory();

    LongWork &m_longWork;
};
