// SPDX-License-Identifier: Apache-2.0
#include "src/directory/KestinDirectory.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/ImpExpStatus.h"
#include "platform/records/KestinMode.h"
#include "platform/records/KestinPaths.h"
#include "platform/records/UpdateReport.h"
#include "src/directory/UseCases.h"

#include <QDir>

KestinDirectory *KestinDirectory::s_instance = nullptr;

KestinDirectory::KestinDirectory(const QString &name)
    : KestinModule(name)
    , m_publisher(*this)
    , m_popups(*this, m_fields)
    , m_settings(*this, m_fields)
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
        s_instance = new KestinDirectory(QStringLiteral("KestinDirectory"));
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
    if (!m_database.completeTables())
        KestinLogger::warning("The look-ups are slow: an index could not be made");
    m_useCases = std::make_unique<UseCases>(m_database.connection(), *this, m_fields);
    connectNews();
    m_settings.readDirectory();
    eventsSyncSubscription();
    preparePhotoDirectory();
    m_popups.fillTexts();
    m_fields.readOnlyMode = false;
    m_fields.lastLocalChangeDate = QDateTime(QDate(1980, 1, 1), QTime(0, 0), Qt::UTC);
    m_settings.readPhotoQuota();
    updateCanonicalNumbers();
    m_useCases->latinNames.checkAndFillLatinName();
    return true;
}

bool KestinDirectory::run()
{
    KestinLogger::debug("KestinDirectory starting...");
    if (m_makeAdaptor)
        m_adaptor = m_makeAdaptor(this);
    getCapabilities();
    m_fields.icsLogin = false;
    m_fields.icsLogin = m_telephonyMode.getKestinMode();
    KestinLogger::debug("KestinDir run; ICS login  : %1", int(m_fields.icsLogin));
    return true;
}

bool KestinDirectory::restoreDataToDefault()
{
    KestinLogger::debug("KestinDirectory restoreDataToDefault...");
    emptyStore();
    return false;
}

bool KestinDirectory::restoreDataToFactory()
{
    KestinLogger::debug("KestinDirectory restoreDataToFactory...");
    emptyStore();
    return true;
}

void KestinDirectory::emptyStore()
{
    // Statements are finished after each use, so none holds the tables.
    m_database.createTables();
    m_publisher.publish(DirectoryEvent::contentChanged());
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

void KestinDirectory::connectNews()
{
    ContactNews *news = &m_useCases->news;
    const auto publishAs = [this](auto makeEvent) {
        return [this, makeEvent](const auto &...arguments) { m_publisher.publish(makeEvent(arguments...)); };
    };
    connect(news, &ContactNews::contactsCreated, this, publishAs(&DirectoryEvent::contactsCreated));
    connect(news, &ContactNews::contactsUpdated, this, publishAs(&DirectoryEvent::contactsUpdated));
    connect(news, &ContactNews::contactsDeleted, this, publishAs(&DirectoryEvent::contactsDeleted));
    connect(news, &ContactNews::previewCreated, this, publishAs(&DirectoryEvent::previewCreated));
    connect(news, &ContactNews::previewDeleted, this, publishAs(&DirectoryEvent::previewDeleted));
    connect(news, &ContactNews::databaseFull, this, publishAs(&DirectoryEvent::databaseFull));
    connect(news, &ContactNews::anonymousContactRefused, this,
            [this] { m_popups.showPopupCreatingAnonymousContactImpossible(); });
}

void KestinDirectory::eventsSyncSubscription()
{
    const QString event = QStringLiteral("READ_ONLY_MODE");
    if (subscribeEvent(event, this, "syncReadOnlyModeSlot(const KestinEvent &)"))
        KestinLogger::debug("KestinDirectory::eventsSyncSubscription : Subscription successful to %1", event);
    else
        KestinLogger::warning("KestinDirectory::eventsSyncSubscription : Subscription failed to %1", event);
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
    if (m_useCases->dialingRules.dialingRulesChanged()) {
        m_useCases->numbers.fillContactsCanonicalNumbers();
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

ListContact KestinDirectory::sortContactByName(const ListContact &contacts, bool byNameOnly, const QString &searchId,
                                               const QString &searchString)
{
    return m_useCases->ordering.sortContactByName(contacts, byNameOnly, searchId, searchString);
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

void KestinDirectory::syncReadOnlyModeSlot(const KestinEvent &evt)
{
    m_readOnlyMode.syncReadOnlyModeSlot(evt);
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
