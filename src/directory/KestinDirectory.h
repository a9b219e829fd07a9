// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinModule.h"
#include "platform/records/Contact.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/Setting.h"
#include "src/contacts/ReadOnlyMode.h"
#include "src/contacts/TelephonyMode.h"
#include "src/dao/Database.h"
#include "src/directory/DirectorySettings.h"
#include "src/directory/Popups.h"
#include "src/directory/SettingsCaller.h"
#include "src/directory/StoreCare.h"
#include "src/fields/DirectoryFields.h"

#include <memory>

class DataRestore;
class NewsPublication;
class QNetworkReply;
class QThread;
class SearchThread;
struct OpenDirectory;

/// The module "KestinDirectory": puts the use cases together, hands them what arrives (bus calls, events, changed
/// settings) and publishes what they tell. What an operation does and answers is said where it is done: see the class
/// that a slot calls.
class KestinDirectory : public KestinModule
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.norlan.Kestin.KestinInterface")

public:
    explicit KestinDirectory(const QString &name);
    ~KestinDirectory() override;

    /// The one module object of the process, made at the first call. Whoever destroys it ends it.
    static KestinDirectory *instance();

    bool check() override;
    bool deploy() override;
    bool init() override;
    bool run() override;
    /// Empties the store and puts the default contacts in. Set-aside databases and the user's photo stay. The answer is
    /// always false; it does not mean failure.
    bool restoreDataToDefault() override;
    /// Empties the store and removes what is left of its owner: set-aside databases, all photos, the user's own too.
    /// The answer is always true.
    bool restoreDataToFactory() override;
    bool mustWait(const QByteArray &method) const override;

    // The order of the slots is their meta-call index, which the platform relies on; the adaptor calls them by name.
public Q_SLOTS:
    int createLocalContact(const QString &reqId, const Contact &contact);
    QMapQStringQString createLocalContacts(const QString &reqId, const ListContact &contacts);
    int modifyLocalContact(const QString &reqId, const Contact &contact);
    QMapQStringQString modifyLocalContacts(const QString &reqId, const ListContact &contacts);
    int deleteLocalContact(const QString &reqId, const QString &idContact);
    int addContactToPreview(const QString &reqId, const QString &idContact);
    int removeContactFromPreview(const QString &reqId, const QString &idContact);
    int updateContactsPreview(const QString &reqId, const QStringList &contactsIds, bool isPreviewed);
    ListContact getContactById(const QString &idContact);
    ListContact getContactsByType(int type);
    ListContact getAllContactsInPreview(int startInd, int length);
    ListContact getLocalContacts(int startInd, int length);
    ListContact getLocalContacts(const QString &contactPhoneNumber);
    int startSearchContactByName(const QString &searchId, const QString &name, int nbContacts, bool localOnly);
    int startSearchContactByAllFields(const QString &searchId, const QString &criteria, bool localOnly);
    int startSearchContactByPhoneNumber(const QString &searchId, const QString &phoneNumber, bool localOnly);
    int startSearchContactByIMAddress(const QString &searchId, const QString &imAddress, bool localOnly);
    ListContactSummary getSearchResults(const QString &searchId, int startInd, int length);
    Contact getContactFromSearch(const QString &searchId, const QString &contactId);
    int purgeSearchResults(const QString &searchId);
    QString copyContactToLocal(const QString &idContact);
    void addContactsToMap(const QString &searchId, const ListContact &contacts);
    void threadSearchFinished(QThread *thread, const QString &searchId);
    QString getImAddressByContactId(const QString &idContact);
    ListContact sortContactByName(const ListContact &contacts, bool byNameOnly = true,
                                  const QString &searchId = QString(), const QString &searchString = QString());
    ListContact getLocalContactByIMAddress(const QString &imAddress);
    ListContact getContactToMerge(const QString &imAdress, const QString &phoneNumber, const QString &extentionPhone);
    ListContact getLocalContactByEmailAddress(const QString &emailAddress);
    int getContactTypeById(const QString &contactId);
    void exportToXml(const QString &path, int pageSize, bool full, const QString &id, const QString &deviceId,
                     const QDateTime &createdDate, const QDateTime &previousExportDate);
    void importFromXml(const QString &path);
    void syncReadOnlyModeSlot(const KestinEvent &evt);

private Q_SLOTS:
    void event_WS_DIRECTORY_GET_CONTACT_PROFILE_handle(const KestinEvent &event);
    void event_WS_DIRECTORY_GET_ATTRIBUTES_handle(const KestinEvent &event);
    void event_WS_DIRECTORY_GET_NEXT_RESULTS_handle(const KestinEvent &event);
    void event_WS_DIRECTORY_GET_OPERATORS_handle(const KestinEvent &event);
    void event_WS_DIRECTORY_SEARCH_handle(const KestinEvent &event);
    void event_WS_DIRECTORY_SEARCH_BY_FULL_NAME_handle(const KestinEvent &event);
    void event_WS_DIRECTORY_STOP_SEARCH_handle(const KestinEvent &event);
    void event_WS_DIRECTORY_CANONIZE_NUMBER_handle(const KestinEvent &event);
    void event_WSMANAGER_EVENT_AVAILABILITY_STATUS_handle(const KestinEvent &event);
    void event_WSMANAGER_EVENT_DIRECTORY_AVAILABILITY_STATUS_handle(const KestinEvent &event);
    void event_WSMANAGER_EVENT_DIRECTORY_GETATTRIBUTEBYCONTACTID_handle(const KestinEvent &event);
    ListSetting defaultContactsChanged(const Setting &setting);
    ListSetting dirMaxContactChanged(const Setting &setting);
    ListSetting dirSearchModeChanged(const Setting &setting);
    ListSetting removeHttpsFromPhotoUrlChanged(const Setting &setting);
    ListSetting userPhotoChanged(const Setting &setting);
    void deleteThread();

public Q_SLOTS:
    void slot_searchByPhoneNumber(const QString &reqId, const QString &phoneNumber);
    void slot_searchByFullName(const QString &reqId, const QString &fullname);
    void slot_stopSearch(const QString &reqId);
    void slot_getNextResults(const QString &reqId);
    void slot_threadSearchFinished(const QString &searchId);
    void slot_addContactsToMap(const QString &searchId, const ListContact &contacts, bool localResults);
    void slot_requestFinished(QNetworkReply *reply);
    void slot_presentationLoaded(const KestinEvent &evt);

private:
    void registerRecords();
    void connectWorker(SearchThread *worker);
    void subscribeToWebService();
    void eventsSyncSubscription();
    void subscribeToPresentationLoaded();
    void preparePhotoDirectory();
    void updateCanonicalNumbers();

    static KestinDirectory *s_instance;

    DirectoryFields m_fields;
    Database m_database;
    Popups m_popups;
    SettingsCaller m_settingsCaller;
    DirectorySettings m_settings;
    TelephonyMode m_telephonyMode;
    ReadOnlyMode m_readOnlyMode;
    std::unique_ptr<OpenDirectory> m_open;
    std::unique_ptr<StoreCare> m_storeCare;
    std::unique_ptr<DataRestore> m_restore;
    std::unique_ptr<ModuleWatch> m_settingsWatch;
    std::unique_ptr<ModuleWatch> m_webServiceWatch;
    std::unique_ptr<NewsPublication> m_news;
};
