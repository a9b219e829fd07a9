// SPDX-License-Identifier: Apache-2.0
#include "src/directory/OpenDirectory.h"

#include "platform/framework/ModuleWatch.h"
#include "src/dao/Connection.h"

#include <QFileInfo>

namespace {

QString besideDatabase(const Connection &connection, const char *name)
{
    return QFileInfo(connection.handle().databaseName()).path() + QLatin1Char('/') + QLatin1String(name);
}

} // namespace

OpenDirectory::OpenDirectory(Connection &connection, RemoteCaller &caller, RemoteCaller &settings,
                             DirectoryFields &fields, const QString &moduleName, LongWork &longWork)
    : dao(connection)
    , photoFiles(dao, fields)
    , numbers(caller, settings, dao)
    , contacts(dao, fields, numbers.canonical)
    , search(fields, dao, numbers.canonical)
    , company(caller, fields)
    , photos(dao, photoFiles, fields, besideDatabase(connection, "photos-to-resize"), longWork)
    , synchronisation(dao, fields, caller, photoFiles, moduleName, longWork)
    , m_longWork(longWork)
{
    connectCompanyDirectory();
    connectPhotos();
}

void OpenDirectory::connectPhotos()
{
    const ContactNews *news = &contacts.news;
    QObject::connect(news, &ContactNews::photoWanted, &photos.ofContacts, &ContactPhotos::want);
    QObject::connect(news, &ContactNews::photoDropped, &photos.ofContacts, &ContactPhotos::forget);
    QObject::connect(news, &ContactNews::photoDropped, &photoFiles,
                     [this](const QString &, const QString &photo) { photoFiles.removeIfUnused(photo); });
    // The file that a contact names may be one that somebody else has put into the folder.
    QObject::connect(news, &ContactNews::photoWanted, &photoFiles, &PhotoFiles::recount);
    QObject::connect(news, &ContactNews::contactsUpdated, &photoFiles, &PhotoFiles::recount);
    const ContactImport *importer = &synchronisation.importer;
    QObject::connect(importer, &ContactImport::photoDropped, &photoFiles, &PhotoFiles::removeIfUnused);
    QObject::connect(importer, &ContactImport::contentChanged, &photos.ofContacts, &ContactPhotos::giveUpUnfitting);
}

void OpenDirectory::connectCompanyDirectory()
{
    const WebServiceEvents *events = &company.events;
    QObject::connect(events, &WebServiceEvents::searchStarted, events,
                     [this](const QString &searchId) { search.mailbox().setStarted(searchId); });
    QObject::connect(events, &WebServiceEvents::packetReceived, events,
                     [this](const QString &searchId, const ListContact &found, int status) {
                         search.mailbox().put(searchId, {found, status});
                     });
    QObject::connect(&contacts.lookup, &ContactLookup::imAddressNotStored, &company.contacts,
                     &RemoteContacts::askForImAddress);
    QObject::connect(&company.contacts, &RemoteContacts::copyArrived, &company.contacts,
                     [this](const QString &reqId, const Contact &contact) {
                         m_longWork.after(&company.contacts, [this, reqId, contact] {
                             contacts.creation.createLocalContact(reqId, contact); // refused like any other
                         });
                     });
}

void OpenDirectory::followCompanyDirectory(const ModuleWatch &manager)
{
    QObject::connect(&manager, &ModuleWatch::left, &search, [this] {
        company.serviceRight.managerLeft();
        search.mailbox().abandon();
    });
    QObject::connect(&manager, &ModuleWatch::came, &search, [this] { company.serviceRight.managerCame(); });
}
