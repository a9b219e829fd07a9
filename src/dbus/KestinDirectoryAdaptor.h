// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinModule.h"
#include "platform/records/Capability.h"
#include "platform/records/Contact.h"
#include "platform/records/ContactSummary.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/Setting.h"
#include "src/dbus/Introspection.h"

#include <QDBusAbstractAdaptor>
#include <QStringList>

/// Publishes the directory's methods on the bus. Each invokes the slot of the same name of the module, its parent, on
/// the main thread, and returns what that returns. A slot that is not there is a KestinException, thrown as a pointer
/// to a new object, which ErrorReplying answers the caller with. Records are found by their registered names, so what
/// a slot takes and returns must be registered (registerDBus…) before the first call.
class KestinDirectoryAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.norlan.Kestin.KestinInterface")
    Q_CLASSINFO("D-Bus Introspection", KESTIN_DIRECTORY_INTROSPECTION)

public:
    /// A child of the module.
    explicit KestinDirectoryAdaptor(KestinModule &module);

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
    ListContact getLocalContactByIMAddress(const QString &imAddress);
    ListContact getContactToMerge(const QString &imAddress, const QString &phoneNumber, const QString &extentionPhone);
    ListContact getLocalContactByEmailAddress(const QString &emailAddress);
    ListContact getAllContactsInPreview(int startInd, int length);
    ListContact getContactsByType(int type);
    ListContact getLocalContacts(int startInd, int length);
    ListContact getLocalContacts(const QString &phoneNumber);
    int startSearchContactByName(const QString &searchId, const QString &name, int nbContacts, bool localOnly);
    int startSearchContactByAllFields(const QString &searchId, const QString &criteria, bool localOnly);
    int startSearchContactByPhoneNumber(const QString &searchId, const QString &phoneNumber, bool localOnly);
    int startSearchContactByIMAddress(const QString &searchId, const QString &imAddress, bool localOnly);
    ListContactSummary getSearchResults(const QString &searchId, int startInd, int length);
    Contact getContactFromSearch(const QString &searchId, const QString &contactId);
    int purgeSearchResults(const QString &searchId);
    QString copyContactToLocal(const QString &idContact);
    QString getImAddressByContactId(const QString &idContact);
    int getContactTypeById(const QString &contactId);
    ListSetting defaultContactsChanged(const Setting &setting);
    ListSetting dirMaxContactChanged(const Setting &setting);
    ListSetting dirSearchModeChanged(const Setting &setting);
    ListSetting removeHttpsFromPhotoUrlChanged(const Setting &setting);
    ListSetting userPhotoChanged(const Setting &setting);
    void exportToXml(const QString &path, int pageSize, bool full, const QString &id, const QString &deviceId,
                     const QDateTime &createdDate, const QDateTime &previousExportDate);
    void importFromXml(const QString &path);
    MapQStringCapability getCapabilities();
    MapQStringCapability getCapabilities(int listId);
    Capability getCapability(const QString &name);
    Capability getCapability(int listId, const QString &name);

private:
    template <typename Result, typename... Arguments>
    Result invoke(const char *method, const Arguments &...arguments);
    template <typename... Arguments>
    void invokeVoid(const char *method, const Arguments &...arguments);
    [[noreturn]] void fail(const char *method);

    KestinModule &m_module;
};
