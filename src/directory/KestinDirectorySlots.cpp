// SPDX-License-Identifier: Apache-2.0
// The slots of KestinDirectory, in the order of the platform's interface. Each hands its call to whom it concerns.
#include "src/directory/KestinDirectory.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/DirectoryCodes.h"
#include "src/dao/ContactOrder.h"
#include "src/directory/OpenDirectory.h"

int KestinDirectory::createLocalContact(const QString &reqId, const Contact &contact)
{
    return m_open->contacts.creation.createLocalContact(reqId, contact);
}

QMapQStringQString KestinDirectory::createLocalContacts(const QString &reqId, const ListContact &contacts)
{
    return m_open->contacts.creation.createLocalContacts(reqId, contacts);
}

int KestinDirectory::modifyLocalContact(const QString &reqId, const Contact &contact)
{
    return m_open->contacts.modification.modifyLocalContact(reqId, contact);
}

QMapQStringQString KestinDirectory::modifyLocalContacts(const QString &reqId, const ListContact &contacts)
{
    return m_open->contacts.modification.modifyLocalContacts(reqId, contacts);
}

int KestinDirectory::deleteLocalContact(const QString &reqId, const QString &idContact)
{
    return m_open->contacts.deletion.deleteLocalContact(reqId, idContact);
}

int KestinDirectory::addContactToPreview(const QString &reqId, const QString &idContact)
{
    return m_open->contacts.preview.addContactToPreview(reqId, idContact);
}

int KestinDirectory::removeContactFromPreview(const QString &reqId, const QString &idContact)
{
    return m_open->contacts.preview.removeContactFromPreview(reqId, idContact);
}

int KestinDirectory::updateContactsPreview(const QString &reqId, const QStringList &contactsIds, bool isPreviewed)
{
    return m_open->contacts.preview.updateContactsPreview(reqId, contactsIds, isPreviewed);
}

ListContact KestinDirectory::getContactById(const QString &idContact)
{
    return m_open->contacts.lookup.getContactById(idContact);
}

ListContact KestinDirectory::getContactsByType(int type)
{
    return m_open->contacts.lookup.getContactsByType(type);
}

ListContact KestinDirectory::getAllContactsInPreview(int startInd, int length)
{
    return m_open->contacts.lookup.getAllContactsInPreview(startInd, length);
}

ListContact KestinDirectory::getLocalContacts(int startInd, int length)
{
    return m_open->contacts.lookup.getLocalContacts(startInd, length);
}

ListContact KestinDirectory::getLocalContacts(const QString &contactPhoneNumber)
{
    return m_open->contacts.lookup.getLocalContacts(contactPhoneNumber);
}

int KestinDirectory::startSearchContactByName(const QString &searchId, const QString &name, int nbContacts,
                                              bool localOnly)
{
    return m_open->search.startSearchContactByName(searchId, name, nbContacts, localOnly);
}

int KestinDirectory::startSearchContactByAllFields(const QString &searchId, const QString &criteria, bool localOnly)
{
    KestinLogger::error("-- Method startSearchContactByAllFields called with searchId=[%1] ,criteria=[%2] and "
                        "localOnly=[%3] is DEPRECATED!!--",
                        searchId, criteria, localOnly ? "true" : "false");
    return ResultCode::withdrawn;
}

int KestinDirectory::startSearchContactByPhoneNumber(const QString &searchId, const QString &phoneNumber,
                                                     bool localOnly)
{
    return m_open->search.startSearchContactByPhoneNumber(searchId, phoneNumber, localOnly);
}

int KestinDirectory::startSearchContactByIMAddress(const QString &searchId, const QString &imAddress, bool localOnly)
{
    KestinLogger::error("-- Method startSearchContactByIMAddress called with searchId=[%1] ,imAddress=[%2] and "
                        "localOnly=[%3] is DEPRECATED !! --",
                        searchId, imAddress, localOnly ? "true" : "false");
    return ResultCode::withdrawn;
}

ListContactSummary KestinDirectory::getSearchResults(const QString &searchId, int startInd, int length)
{
    return m_open->search.getSearchResults(searchId, startInd, length);
}

Contact KestinDirectory::getContactFromSearch(const QString &searchId, const QString &contactId)
{
    return m_open->search.getContactFromSearch(searchId, contactId);
}

int KestinDirectory::purgeSearchResults(const QString &searchId)
{
    return m_open->search.purgeSearchResults(searchId);
}

QString KestinDirectory::copyContactToLocal(const QString &idContact)
{
    m_open->company.contacts.copyContactToLocal(idContact);
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
    m_open->contacts.lookup.getImAddressByContactId(idContact);
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
    return m_open->contacts.lookup.getLocalContactByIMAddress(imAddress);
}

ListContact KestinDirectory::getContactToMerge(const QString &imAdress, const QString &phoneNumber,
                                               const QString &extentionPhone)
{
    return m_open->contacts.lookup.getContactToMerge(imAdress, phoneNumber, extentionPhone);
}

ListContact KestinDirectory::getLocalContactByEmailAddress(const QString &emailAddress)
{
    return m_open->contacts.lookup.getLocalContactByEmailAddress(emailAddress);
}

int KestinDirectory::getContactTypeById(const QString &contactId)
{
    return m_open->contacts.lookup.getContactTypeById(contactId);
}

void KestinDirectory::exportToXml(const QString &path, int pageSize, bool full, const QString &id,
                                  const QString &deviceId, const QDateTime &createdDate,
                                  const QDateTime &previousExportDate)
{
    m_open->synchronisation.exporter.exportToXml(path, pageSize, full, id, deviceId, createdDate, previousExportDate);
}

void KestinDirectory::importFromXml(const QString &path)
{
    m_open->synchronisation.importer.importFromXml(path);
}

void KestinDirectory::syncReadOnlyModeSlot(const KestinEvent &evt)
{
    m_readOnlyMode.syncReadOnlyModeSlot(evt);
    m_settings.readOnlyModeTold();
}

void KestinDirectory::event_WS_DIRECTORY_GET_CONTACT_PROFILE_handle(const KestinEvent &event)
{
    m_open->company.events.contactProfile(event);
}

void KestinDirectory::event_WS_DIRECTORY_GET_ATTRIBUTES_handle(const KestinEvent &event)
{
    m_open->company.events.attributes(event);
}

void KestinDirectory::event_WS_DIRECTORY_GET_NEXT_RESULTS_handle(const KestinEvent &event)
{
    m_open->company.events.nextResults(event);
}

void KestinDirectory::event_WS_DIRECTORY_GET_OPERATORS_handle(const KestinEvent &event)
{
    m_open->company.events.operators(event);
}

void KestinDirectory::event_WS_DIRECTORY_SEARCH_handle(const KestinEvent &event)
{
    m_open->company.events.searchAccepted(event);
}

void KestinDirectory::event_WS_DIRECTORY_SEARCH_BY_FULL_NAME_handle(const KestinEvent &event)
{
    m_open->company.events.searchAccepted(event);
}

void KestinDirectory::event_WS_DIRECTORY_STOP_SEARCH_handle(const KestinEvent &event)
{
    m_open->company.events.stopSearch(event);
}

void KestinDirectory::event_WS_DIRECTORY_CANONIZE_NUMBER_handle(const KestinEvent &event)
{
    m_open->company.events.canonizeNumber(event);
}

void KestinDirectory::event_WSMANAGER_EVENT_AVAILABILITY_STATUS_handle(const KestinEvent &event)
{
    m_open->company.events.managerAvailability(event);
}

void KestinDirectory::event_WSMANAGER_EVENT_DIRECTORY_AVAILABILITY_STATUS_handle(const KestinEvent &event)
{
    m_open->company.events.directoryAvailability(event);
}

void KestinDirectory::event_WSMANAGER_EVENT_DIRECTORY_GETATTRIBUTEBYCONTACTID_handle(const KestinEvent &event)
{
    m_open->company.events.attributeByContactId(event);
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
    m_open->company.searchCalls.searchByPhoneNumber(reqId, phoneNumber);
}

void KestinDirectory::slot_searchByFullName(const QString &reqId, const QString &fullname)
{
    m_open->company.searchCalls.searchByFullName(reqId, fullname);
}

void KestinDirectory::slot_stopSearch(const QString &reqId)
{
    m_open->company.searchCalls.stopSearch(reqId);
}

void KestinDirectory::slot_getNextResults(const QString &reqId)
{
    m_open->company.searchCalls.getNextResults(reqId);
}

void KestinDirectory::slot_threadSearchFinished(const QString &searchId)
{
    m_open->search.finishWorker(sender(), searchId);
}

void KestinDirectory::slot_addContactsToMap(const QString &searchId, const ListContact &contacts, bool localResults)
{
    m_open->search.addContacts(searchId, contacts, localResults);
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
    m_open->photos.ofUser.setUserPhoto(setting.getValue());
    return {};
}

void KestinDirectory::slot_requestFinished(QNetworkReply *reply)
{
    m_open->photos.downloads.requestFinished(reply);
}

void KestinDirectory::slot_presentationLoaded(const KestinEvent &)
{
    KestinLogger::debug("KestinDirectory::slot_presentationLoaded: just having been notified that the presentation is "
                        "loaded => we are ready to send UserPhoto event");
    if (const auto photo = m_settings.getUserPhotoSetting()) // else the photo that is there stays
        m_open->photos.ofUser.setUserPhoto(*photo);
}
