// SPDX-License-Identifier: Apache-2.0
#include "src/directory/UseCases.h"

#include "platform/framework/ModuleWatch.h"
#include "src/dao/Connection.h"

#include <QFileInfo>

namespace {

QString besideDatabase(const Connection &connection, const char *name)
{
    return QFileInfo(connection.handle().databaseName()).path() + QLatin1Char('/') + QLatin1String(name);
}

} // namespace

UseCases::UseCases(Connection &connection, RemoteCaller &caller, RemoteCaller &settingsCaller, DirectoryFields &fields,
                   const QString &moduleName)
    : dao(connection)
    , numbers(caller)
    , storedNumbers(numbers, dao)
    , dialingRules(settingsCaller, storedNumbers)
    , latinNames(dao)
    , deletion(dao, fields, news)
    , creation(dao, fields, numbers, deletion, news)
    , modification(dao, fields, numbers, news)
    , preview(dao, fields, news)
    , defaultContacts(dao, numbers, creation, deletion, news)
    , lookup(dao)
    , search(fields, dao, numbers)
    , remoteDirectory(caller)
    , remoteContacts(remoteDirectory)
    , searchCalls(caller)
    , serviceRight(caller, fields)
    , photoFiles(dao, fields)
    , photoResizing(dao, photoFiles, pictures, besideDatabase(connection, "photos-to-resize"))
    , contactPhotos(network, pictures, dao, photoFiles)
    , userPhoto(network, pictures, photoFiles, fields)
    , photoDownloads(contactPhotos, userPhoto)
    , contactExport(dao, fields, moduleName)
    , contactImport(dao, fields, numbers, photoFiles)
{
    connectCompanyDirectory();
    connectPhotos();
    // A photo that came after an export is a change to be exported.
    QObject::connect(&contactPhotos, &ContactPhotos::contactsUpdated, &contactPhotos,
                     [&fields] { fields.noteLocalChange(); });
}

void UseCases::connectPhotos()
{
    QObject::connect(&news, &ContactNews::photoWanted, &contactPhotos, &ContactPhotos::want);
    QObject::connect(&news, &ContactNews::photoDropped, &contactPhotos, &ContactPhotos::forget);
    QObject::connect(&news, &ContactNews::photoDropped, &photoFiles,
                     [this](const QString &, const QString &photo) { photoFiles.removeIfUnused(photo); });
    // The file that a contact names may be one that somebody else has put into the folder.
    QObject::connect(&news, &ContactNews::photoWanted, &photoFiles, &PhotoFiles::recount);
    QObject::connect(&news, &ContactNews::contactsUpdated, &photoFiles, &PhotoFiles::recount);
    QObject::connect(&contactImport, &ContactImport::photoDropped, &photoFiles, &PhotoFiles::removeIfUnused);
    QObject::connect(&contactImport, &ContactImport::contentChanged, &contactPhotos, &ContactPhotos::giveUpUnfitting);
}

void UseCases::connectCompanyDirectory()
{
    const WebServiceEvents *events = &webServiceEvents;
    const auto connect = [events](auto signal, auto slot) { QObject::connect(events, signal, events, slot); };
    connect(&WebServiceEvents::searchStarted,
            [this](const QString &searchId) { search.mailbox().setStarted(searchId); });
    connect(&WebServiceEvents::packetReceived,
            [this](const QString &searchId, const ListContact &contacts, int status) {
                search.mailbox().put(searchId, {contacts, status});
            });
    connect(&WebServiceEvents::attributesReceived,
            [this](bool areInitialised) { serviceRight.setAttributesInitialised(areInitialised); });
    connect(&WebServiceEvents::availabilityChanged, [this] { serviceRight.request(); });
    QObject::connect(events, &WebServiceEvents::profileReceived, &remoteContacts, &RemoteContacts::profileReceived);
    QObject::connect(&lookup, &ContactLookup::imAddressNotStored, &remoteContacts, &RemoteContacts::askForImAddress);
    QObject::connect(&remoteContacts, &RemoteContacts::copyArrived, &remoteContacts,
                     [this](const QString &reqId, const Contact &contact) {
                         creation.createLocalContact(reqId, contact); // refused like any other
                     });
}

void UseCases::followCompanyDirectory(const ModuleWatch &manager)
{
    QObject::connect(&manager, &ModuleWatch::left, &search, [this] {
        serviceRight.managerLeft();
        search.mailbox().abandon();
    });
    QObject::connect(&manager, &ModuleWatch::came, &search, [this] { serviceRight.managerCame(); });
}
