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
#include "src/directory/DataRestore.h"
#include "src/directory/NewsPublication.h"
#include "src/directory/OpenDirectory.h"
#include "src/search/RemoteSearchThreads.h"

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
    m_open = std::make_unique<OpenDirectory>(m_database.connection(), *this, m_settingsCaller, m_fields,
                                             getModuleName(), longWork());
    m_storeCare = std::make_unique<StoreCare>(m_database, longWork());
    m_restore = std::make_unique<DataRestore>(m_database, *m_open, m_settings);
    m_news = std::make_unique<NewsPublication>(*m_open, m_fields, *this, m_popups);
    connect(&m_open->search, &ContactSearch::workerCreated, this, &KestinDirectory::connectWorker);
    connect(&m_settings, &DirectorySettings::defaultContactsWanted, this, [this](const QString &value) {
        longWork().after(&m_settings, [this, value] { m_open->contacts.defaultContacts.setDefaultContacts(value); });
    });
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
    m_open->contacts.defaultContacts.setDefaultContacts(defaultContacts);
    m_fields.lastLocalChangeDate = QDateTime(QDate(1980, 1, 1), QTime(0, 0), Qt::UTC);
    m_settings.readPhotoQuota();
    // By name: a typed connection refers to the network library, which is not loaded yet.
    connect(&m_open->photos.network, SIGNAL(requestFinished(QNetworkReply *)), this,
            SLOT(slot_requestFinished(QNetworkReply *)));
    updateCanonicalNumbers();
    m_settingsCaller.setStarted();
    m_open->contacts.latinNames.checkAndFillLatinName();
    m_restore->sweepPhotos();
    m_open->photos.resizing.resizeContactPhotosIfNeeded();
    return true;
}

bool KestinDirectory::run()
{
    KestinLogger::debug("KestinDirectory starting...");
    getCapabilities();
    m_fields.icsLogin = false;
    const bool isAllowed = m_telephonyMode.getKestinMode();
    KestinLogger::debug("KestinDir run; ICS login  : %1", int(isAllowed));
    m_open->company.serviceRight.start(isAllowed);
    m_storeCare->check();
    return true;
}

bool KestinDirectory::restoreDataToDefault()
{
    KestinLogger::debug("KestinDirectory restoreDataToDefault...");
    longWork().finish();
    if (m_restore->toDefault())
        DirectoryEvent::contentChanged().send(*this);
    return false;
}

bool KestinDirectory::restoreDataToFactory()
{
    KestinLogger::debug("KestinDirectory restoreDataToFactory...");
    longWork().finish();
    if (m_restore->toFactory())
        DirectoryEvent::contentChanged().send(*this);
    return true;
}

bool KestinDirectory::mustWait(const QByteArray &method) const
{
    return longWork().isBusy() && m_open->synchronisation.mustWait(method);
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
    connect(worker, &SearchThread::signal_storeDamaged, m_storeCare.get(), &StoreCare::repair);
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
    m_open->followCompanyDirectory(*m_webServiceWatch);
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
    if (m_open->numbers.dialingRules.dialingRulesChanged() || m_open->numbers.stored.areStale()) {
        m_open->numbers.stored.fillContactsCanonicalNumbers();
        KestinLogger::debug("KestinDirectory::init() : updating canonical numbers... done.");
    } else {
        KestinLogger::debug("KestinDirectory::init() : updating canonical numbers... dialingRules dont have change, "
                            "pass.");
    }
}

#include "moc_KestinDirectory.cpp"
