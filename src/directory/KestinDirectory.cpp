// SPDX-License-Identifier: Apache-2.0
#include "src/directory/KestinDirectory.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"
#include "platform/records/ImpExpStatus.h"
#include "platform/records/KestinBus.h"
#include "platform/records/KestinMode.h"
#include "platform/records/KestinPaths.h"
#include "platform/records/PlatformEvents.h"
#include "platform/records/UpdateReport.h"
#include "src/dao/ContactOrder.h"
#include "src/directory/DataRestore.h"
#include "src/directory/NewsPublication.h"
#include "src/directory/UseCases.h"
#include "src/search/RemoteSearchByNameThread.h"
#include "src/search/RemoteSearchByPhoneNumberThread.h"

#include <QDir>

KestinDirectory *KestinDirectory::s_instance = nullptr;

KestinDirectory::KestinDirectory(const QString &name)
    : KestinModule(name)
    , m_popups(*this, m_fields)
    , m_settingsCaller(*this)
    , m_settings(m_settingsCaller, m_fields)
    , m_telephonyMode(*this)
    , m_readOnlyMode(name, m_fields)
{
}

KestinDirectory::~KestinDirectory()
{
    if (s_instance == this)
        s_instance = nullptr;
}

KestinDirectory *KestinDirectory::instance()
{
    if (!s_instance)
        s_instance = new KestinDirectory(ModuleName::directory);
    return s_instance;
}

bool KestinDirectory::check()
{
    KestinLogger::debug("KestinDirectory checking...");
    m_database.openDatabase(QString()); // one that cannot be opened fails the check
    return m_database.checkTables();
}

bool KestinDirectory::deploy()
{
    KestinLogger::debug("KestinDirectory deploying...");
    return m_database.setAside() && m_database.createTables();
}

bool KestinDirectory::init()
{
    KestinLogger::debug("KestinDirectory initialization...");
    registerRecords();
    m_database.completeTables();
    m_useCases =
        std::make_unique<UseCases>(m_database.connection(), *this, m_settingsCaller, m_fields, getModuleName());
    m_restore = std::make_unique<DataRestore>(m_database, *m_useCases, m_settings);
    m_news = std::make_unique<NewsPublication>(*m_useCases, m_fields, *this, m_popups);
    connect(&m_useCases->search, &ContactSearch::workerCreated, this, &KestinDirectory::connectWorker);
    connect(&m_settings, &DirectorySettings::defaultContactsWanted, this,
            [this](const QString &value) { m_useCases->defaultContacts.setDefaultContacts(value); });
    m_settingsWatch = watchModule(ModuleName::settings);
    connect(m_settingsWatch.get(), &ModuleWatch::came, &m_settings, &DirectorySettings::readAgain);
    m_settings.readDirectory();
    subscribeToWebService();
    eventsSyncSubscription();
    subscribeToPresentationLoaded();
    preparePhotoDirectory();
    m_popups.fillTexts();
    m_fields.readOnlyMode = false;
    m_fields.importOngoing = false;
    const QString defaultContacts = m_settings.getDefaultContactsSetting();
    KestinLogger::debug("KestinDir run; Got Setting DIRECTORY_SETTING_DEFAULT_CONTACTS%1",
                        AddressText::withoutUserInfo(defaultContacts));
    m_useCases->defaultContacts.setDefaultContacts(defaultContacts);
    m_fields.lastLocalChangeDate = QDateTime(QDate(1980, 1, 1), QTime(0, 0), Qt::UTC);
    m_settings.readPhotoQuota();
    connect(&m_useCases->network, &KestinDirectoryNetwork::requestFinished, this,
            &KestinDirectory::slot_requestFinished);
    updateCanonicalNumbers();
    m_settingsCaller.setStarted();
    m_useCases->latinNames.checkAndFillLatinName();
    m_restore->sweepPhotos();
    m_useCases->photoResizing.resizeContactPhotosIfNeeded();
    return true;
}

bool KestinDirectory::run()
{
    KestinLogger::debug("KestinDirectory starting...");
    getCapabilities();
    m_fields.icsLogin = false;
    const bool isAllowed = m_telephonyMode.getKestinMode();
    KestinLogger::debug("KestinDir run; ICS login  : %1", int(isAllowed));
    m_useCases->serviceRight.start(isAllowed);
    return true;
}

bool KestinDirectory::restoreDataToDefault()
{
    KestinLogger::debug("KestinDirectory restoreDataToDefault...");
    if (m_restore->toDefault())
        DirectoryEvent::contentChanged().send(*this);
    return false;
}

bool KestinDirectory::restoreDataToFactory()
{
    KestinLogger::debug("KestinDirectory restoreDataToFactory...");
    if (m_restore->toFactory())
        DirectoryEvent::contentChanged().send(*this);
    return true;
}

void KestinDirectory::registerRecords()
{
    registerDBusContact();
    registerDBusCapability();
    registerDBusSetting();
    registerDBusImpExpStatus();
    registerDBusContactSummary();
    registerDBusQMapQStringQStringList();
    registerDBusUpdateReport();
    registerDBusKestinMode();
}

void KestinDirectory::connectWorker(SearchThread *worker)
{
    connect(worker, &SearchThread::signal_addContactsToMap, this, &KestinDirectory::slot_addContactsToMap);
    connect(worker, &SearchThread::signal_threadSearchFinished, this, &KestinDirectory::slot_threadSearchFinished);
    connect(worker, &QThread::finished, this, &KestinDirectory::deleteThread);
    if (auto *remote = qobject_cast<RemoteSearchThread *>(worker)) {
        connect(remote, &RemoteSearchThread::signal_getNextResults, this, &KestinDirectory::slot_getNextResults);
        connect(remote, &RemoteSearchThread::signal_stopSearch, this, &KestinDirectory::slot_stopSearch);
    }
    if (auto *byName = qobject_cast<RemoteSearchByNameThread *>(worker))
        connect(byName, &RemoteSearchByNameThread::signal_searchByFullName, this,
                &KestinDirectory::slot_searchByFullName);
    if (auto *byNumber = qobject_cast<RemoteSearchByPhoneNumberThread *>(worker))
        connect(byNumber, &RemoteSearchByPhoneNumberThread::signal_searchByPhoneNumber, this,
                &KestinDirectory::slot_searchByPhoneNumber);
}

void KestinDirectory::subscribeToWebService()
{
    constexpr std::pair<QLatin1String, const char *> handlers[] = {
        {EventName::wsContactProfile, "event_WS_DIRECTORY_GET_CONTACT_PROFILE_handle(KestinEvent)"},
        {EventName::wsAttributes, "event_WS_DIRECTORY_GET_ATTRIBUTES_handle(KestinEvent)"},
        {EventName::wsNextResults, "event_WS_DIRECTORY_GET_NEXT_RESULTS_handle(KestinEvent)"},
        {EventName::wsOperators, "event_WS_DIRECTORY_GET_OPERATORS_handle(KestinEvent)"},
        {EventName::wsSearch, "event_WS_DIRECTORY_SEARCH_handle(KestinEvent)"},
        {EventName::wsSearchByFullName, "event_WS_DIRECTORY_SEARCH_BY_FULL_NAME_handle(KestinEvent)"},
        {EventName::wsStopSearch, "event_WS_DIRECTORY_STOP_SEARCH_handle(KestinEvent)"},
        {EventName::wsCanonizeNumber, "event_WS_DIRECTORY_CANONIZE_NUMBER_handle(KestinEvent)"},
        {EventName::wsManagerAvailability, "event_WSMANAGER_EVENT_AVAILABILITY_STATUS_handle(KestinEvent)"},
        {EventName::wsDirectoryAvailability, "event_WSMANAGER_EVENT_DIRECTORY_AVAILABILITY_STATUS_handle(KestinEvent)"},
        {EventName::wsAttributeByContactId,
         "event_WSMANAGER_EVENT_DIRECTORY_GETATTRIBUTEBYCONTACTID_handle(KestinEvent)"},
    };
    for (const auto &[event, slot] : handlers)
        subscribeEvent(event, this, slot); // without them the company directory stays silent
    m_webServiceWatch = watchModule(ModuleName::webServiceManager);
    m_useCases->followCompanyDirectory(*m_webServiceWatch);
}

void KestinDirectory::eventsSyncSubscription()
{
    const QString event = EventName::readOnlyMode;
    if (subscribeEvent(event, this, "syncReadOnlyModeSlot(const KestinEvent &)"))
        KestinLogger::debug("KestinDirectory::eventsSyncSubscription : Subscription successful to %1", event);
    else
        KestinLogger::warning("KestinDirectory::eventsSyncSubscription : Subscription failed to %1", event);
}

void KestinDirectory::subscribeToPresentationLoaded()
{
    if (subscribeEvent(EventName::presentationLoaded, this, "slot_presentationLoaded(const KestinEvent &)"))
        KestinLogger::info("KestinDirectory::subscribeToPresentationLoaded : subscription successful to "
                           "PresentationLoaded event");
    else
        KestinLogger::warning("KestinDirectory::subscribeToPresentationLoaded : subscription failed to "
                              "PresentationLoaded event");
}

void KestinDirectory::preparePhotoDirectory()
{
    m_fields.photoDirectory = KestinPaths::data(QStringLiteral("/data/%1/photos/").arg(getModuleName()));
    if (!QDir(m_fields.photoDirectory).exists())
        QDir().mkpath(m_fields.photoDirectory); // without it photos cannot be kept, all else works
}

void KestinDirectory::updateCanonicalNumbers()
{
    KestinLogger::debug("KestinDirectory::init() : updating canonical numbers...");
    if (m_useCases->dialingRules.dialingRulesChanged() || m_useCases->storedNumbers.areStale()) {
        m_useCases->storedNumbers.fillContactsCanonicalNumbers();
        KestinLogger::debug("KestinDirectory::init() : updating canonical numbers... done.");
    } else {
        KestinLogger::debug("KestinDirectory::init() : updating canonical numbers... dialingRules dont have change, "
                            "pass.");
    }
}

int KestinDirectory::createLocalContact(const QString &reqId, const Contact &contact)
{
    return m_useCases->creation.createLocalContact(reqId, contact);
}

QMapQStringQString KestinDirectory::createLocalContacts(const QString &reqId, const ListContact &contacts)
{
    return m_useCases->creation.createLocalContacts(reqId, contacts);
}

int KestinDirectory::modifyLocalContact(const QString &reqId, const Contact &contact)
{
    return m_useCases->modification.modifyLocalContact(reqId, contact);
}

QMapQStringQString KestinDirectory::modifyLocalContacts(const QString &reqId, const ListContact &contacts)
{
    return m_useCases->modification.modifyLocalContacts(reqId, contacts);
}

int KestinDirectory::deleteLocalContact(const QString &reqId, const QString &idContact)
{
    return m_useCases->deletion.deleteLocalContact(reqId, idContact);
}

int KestinDirectory::addContactToPreview(const QString &reqId, const QString &idContact)
{
    return m_useCases->preview.addContactToPreview(reqId, idContact);
}

int KestinDirectory::removeContactFromPreview(const QString &reqId, const QString &idContact)
{
    return m_useCases->preview.removeContactFromPreview(reqId, idContact);
}

int KestinDirectory::updateContactsPreview(const QString &reqId, const QStringList &contactsIds, bool isPreviewed)
{
    return m_useCases->preview.updateContactsPreview(reqId, contactsIds, isPreviewed);
}

ListContact KestinDirectory::getContactById(const QString &idContact)
{
    return m_useCases->lookup.getContactById(idContact);
}

ListContact KestinDirectory::getContactsByType(int type)
{
    return m_useCases->lookup.getContactsByType(type);
}

ListContact KestinDirectory::getAllContactsInPreview(int startInd, int length)
{
    return m_useCases->lookup.getAllContactsInPreview(startInd, length);
}

ListContact KestinDirectory::getLocalContacts(int startInd, int length)
{
    return m_useCases->lookup.getLocalContacts(startInd, length);
}

ListContact KestinDirectory::getLocalContacts(const QString &contactPhoneNumber)
{
    return m_useCases->lookup.getLocalContacts(contactPhoneNumber);
}

int KestinDirectory::startSearchContactByName(const QString &searchId, const QString &name, int nbContacts,
                                              bool localOnly)
{
    return m_useCases->search.startSearchContactByName(searchId, name, nbContacts, localOnly);
}

int KestinDirectory::startSearchContactByAllFields(const QString &searchId, const QString &criteria, bool localOnly)
{
    KestinLogger::error("-- Method startSearchContactByAllFields called with searchId=[%1] ,criteria=[%2] and "
                        "localOnly=[%3] is DEPRECATED!!--",
                        searchId, criteria, localOnly ? "true" : "false");
    return -1;
}

int KestinDirectory::startSearchContactByPhoneNumber(const QString &searchId, const QString &phoneNumber,
                                                     bool localOnly)
{
    return m_useCases->search.startSearchContactByPhoneNumber(searchId, phoneNumber, localOnly);
}

int KestinDirectory::startSearchContactByIMAddress(const QString &searchId, const QString &imAddress, bool localOnly)
{
    KestinLogger::error("-- Method startSearchContactByIMAddress called with searchId=[%1] ,imAddress=[%2] and "
                        "localOnly=[%3] is DEPRECATED !! --",
                        searchId, imAddress, localOnly ? "true" : "false");
    return -1;
}

ListContactSummary KestinDirectory::getSearchResults(const QString &searchId, int startInd, int length)
{
    return m_useCases->search.getSearchResults(searchId, startInd, length);
}

Contact KestinDirectory::getContactFromSearch(const QString &searchId, const QString &contactId)
{
    return m_useCases->search.getContactFromSearch(searchId, contactId);
}

int KestinDirectory::purgeSearchResults(const QString &searchId)
{
    return m_useCases->search.purgeSearchResults(searchId);
}

QString KestinDirectory::copyContactToLocal(const QString &idContact)
{
    m_useCases->remoteContacts.copyContactToLocal(idContact);
    return {}; // the contact comes with its event
}

void KestinDirectory::addContactsToMap(const QString &, const ListContact &)
{
    KestinLogger::error("-- Method addContactsToMap called : DEPRECATED !!!");
}

void KestinDirectory::threadSearchFinished(QThread *, const QString &)
{
    KestinLogger::error("-- Method threadSearchFinished called : DEPRECATED !!!");
}

QString KestinDirectory::getImAddressByContactId(const QString &idContact)
{
    m_useCases->lookup.getImAddressByContactId(idContact);
    return {}; // the address comes with its event
}

ListContact KestinDirectory::sortContactByName(const ListContact &contacts, bool byNameOnly, const QString &searchId,
                                               const QString &searchString)
{
    Q_UNUSED(searchId) // whom it sets aside belongs to no search
    return byNameOnly ? ContactOrder::byName(contacts, searchString)
                      : ContactOrder::forSearch(contacts, searchString).ordered;
}

ListContact KestinDirectory::getLocalContactByIMAddress(const QString &imAddress)
{
    return m_useCases->lookup.getLocalContactByIMAddress(imAddress);
}

ListContact KestinDirectory::getContactToMerge(const QString &imAdress, const QString &phoneNumber,
                                               const QString &extentionPhone)
{
    return m_useCases->lookup.getContactToMerge(imAdress, phoneNumber, extentionPhone);
}

ListContact KestinDirectory::getLocalContactByEmailAddress(const QString &emailAddress)
{
    return m_useCases->lookup.getLocalContactByEmailAddress(emailAddress);
}

int KestinDirectory::getContactTypeById(const QString &contactId)
{
    return m_useCases->lookup.getContactTypeById(contactId);
}

void KestinDirectory::exportToXml(const QString &path, int pageSize, bool full, const QString &id,
                                  const QString &deviceId, const QDateTime &createdDate,
                                  const QDateTime &previousExportDate)
{
    m_useCases->contactExport.exportToXml(path, pageSize, full, id, deviceId, createdDate, previousExportDate);
}

void KestinDirectory::importFromXml(const QString &path)
{
    m_useCases->contactImport.importFromXml(path);
}

void KestinDirectory::syncReadOnlyModeSlot(const KestinEvent &evt)
{
    m_readOnlyMode.syncReadOnlyModeSlot(evt);
    m_settings.readOnlyModeTold();
}

void KestinDirectory::event_WS_DIRECTORY_GET_CONTACT_PROFILE_handle(const KestinEvent &event)
{
    m_useCases->webServiceEvents.contactProfile(event);
}

void KestinDirectory::event_WS_DIRECTORY_GET_ATTRIBUTES_handle(const KestinEvent &event)
{
    m_useCases->webServiceEvents.attributes(event);
}

void KestinDirectory::event_WS_DIRECTORY_GET_NEXT_RESULTS_handle(const KestinEvent &event)
{
    m_useCases->webServiceEvents.nextResults(event);
}

void KestinDirectory::event_WS_DIRECTORY_GET_OPERATORS_handle(const KestinEvent &event)
{
    m_useCases->webServiceEvents.operators(event);
}

void KestinDirectory::event_WS_DIRECTORY_SEARCH_handle(const KestinEvent &event)
{
    m_useCases->webServiceEvents.searchAccepted(event);
}

void KestinDirectory::event_WS_DIRECTORY_SEARCH_BY_FULL_NAME_handle(const KestinEvent &event)
{
    m_useCases->webServiceEvents.searchAccepted(event);
}

void KestinDirectory::event_WS_DIRECTORY_STOP_SEARCH_handle(const KestinEvent &event)
{
    m_useCases->webServiceEvents.stopSearch(event);
}

void KestinDirectory::event_WS_DIRECTORY_CANONIZE_NUMBER_handle(const KestinEvent &event)
{
    m_useCases->webServiceEvents.canonizeNumber(event);
}

void KestinDirectory::event_WSMANAGER_EVENT_AVAILABILITY_STATUS_handle(const KestinEvent &event)
{
    m_useCases->webServiceEvents.managerAvailability(event);
}

void KestinDirectory::event_WSMANAGER_EVENT_DIRECTORY_AVAILABILITY_STATUS_handle(const KestinEvent &event)
{
    m_useCases->webServiceEvents.directoryAvailability(event);
}

void KestinDirectory::event_WSMANAGER_EVENT_DIRECTORY_GETATTRIBUTEBYCONTACTID_handle(const KestinEvent &event)
{
    m_useCases->webServiceEvents.attributeByContactId(event);
}

void KestinDirectory::deleteThread()
{
    if (!sender())
        return;
    KestinLogger::debug("Marking thread for deletion");
    sender()->deleteLater();
}

void KestinDirectory::slot_searchByPhoneNumber(const QString &reqId, const QString &phoneNumber)
{
    m_useCases->searchCalls.searchByPhoneNumber(reqId, phoneNumber);
}

void KestinDirectory::slot_searchByFullName(const QString &reqId, const QString &fullname)
{
    m_useCases->searchCalls.searchByFullName(reqId, fullname);
}

void KestinDirectory::slot_stopSearch(const QString &reqId)
{
    m_useCases->searchCalls.stopSearch(reqId);
}

void KestinDirectory::slot_getNextResults(const QString &reqId)
{
    m_useCases->searchCalls.getNextResults(reqId);
}

void KestinDirectory::slot_threadSearchFinished(const QString &searchId)
{
    m_useCases->search.finishWorker(sender(), searchId);
}

void KestinDirectory::slot_addContactsToMap(const QString &searchId, const ListContact &contacts, bool localResults)
{
    m_useCases->search.addContacts(searchId, contacts, localResults);
}

ListSetting KestinDirectory::defaultContactsChanged(const Setting &setting)
{
    m_settings.defaultContactsChanged(setting);
    return {};
}

ListSetting KestinDirectory::dirMaxContactChanged(const Setting &setting)
{
    m_settings.dirMaxContactChanged(setting);
    return {};
}

ListSetting KestinDirectory::dirSearchModeChanged(const Setting &setting)
{
    m_settings.dirSearchModeChanged(setting);
    return {};
}

ListSetting KestinDirectory::removeHttpsFromPhotoUrlChanged(const Setting &setting)
{
    m_settings.removeHttpsFromPhotoUrlChanged(setting);
    return {};
}

ListSetting KestinDirectory::userPhotoChanged(const Setting &setting)
{
    KestinLogger::debug("KestinDirectory::userPhotoChanged just called - (received a UserPhoto event)");
    m_useCases->userPhoto.setUserPhoto(setting.getValue());
    return {};
}

void KestinDirectory::slot_requestFinished(QNetworkReply *reply)
{
    m_useCases->photoDownloads.requestFinished(reply);
}

void KestinDirectory::slot_presentationLoaded(const KestinEvent &)
{
    KestinLogger::debug("KestinDirectory::slot_presentationLoaded: just having been notified that the presentation is "
                        "loaded => we are ready to send UserPhoto event");
    bool isKnown = false;
    const QString photo = m_settings.getUserPhotoSetting(&isKnown);
    if (isKnown) // else the one that is there stays
        m_useCases->userPhoto.setUserPhoto(photo);
}
