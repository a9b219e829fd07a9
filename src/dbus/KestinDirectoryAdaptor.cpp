// SPDX-License-Identifier: Apache-2.0
#include "src/dbus/KestinDirectoryAdaptor.h"

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinLogger.h"

namespace {

template <typename Type>
QArgument<Type> argument(const Type &value)
{
    return {QMetaType::fromType<Type>().name(), value};
}

} // namespace

KestinDirectoryAdaptor::KestinDirectoryAdaptor(KestinModule &module)
    : QDBusAbstractAdaptor(&module)
    , m_module(module)
{
    setAutoRelaySignals(true);
}

template <typename Result, typename... Arguments>
Result KestinDirectoryAdaptor::invoke(const char *method, const Arguments &...arguments)
{
    Result result{};
    const QReturnArgument<Result> returned(QMetaType::fromType<Result>().name(), result);
    if (!QMetaObject::invokeMethod(&m_module, method, Qt::AutoConnection, returned, argument(arguments)...))
        fail(method);
    return result;
}

template <typename... Arguments>
void KestinDirectoryAdaptor::invokeVoid(const char *method, const Arguments &...arguments)
{
    if (!QMetaObject::invokeMethod(&m_module, method, Qt::AutoConnection, argument(arguments)...))
        fail(method);
}

void KestinDirectoryAdaptor::fail(const char *method)
{
    KestinLogger::debug("Adaptor::invokeMethod failed:%1", method);
    throw new KestinException(m_module.getModuleName(), KestinException::InvocationFailed,
                              QStringLiteral("Adaptor::invokeMethod failed: %1").arg(QLatin1String(method)));
}

int KestinDirectoryAdaptor::createLocalContact(const QString &reqId, const Contact &contact)
{
    return invoke<int>("createLocalContact", reqId, contact);
}

QMapQStringQString KestinDirectoryAdaptor::createLocalContacts(const QString &reqId, const ListContact &contacts)
{
    return invoke<QMapQStringQString>("createLocalContacts", reqId, contacts);
}

int KestinDirectoryAdaptor::modifyLocalContact(const QString &reqId, const Contact &contact)
{
    return invoke<int>("modifyLocalContact", reqId, contact);
}

QMapQStringQString KestinDirectoryAdaptor::modifyLocalContacts(const QString &reqId, const ListContact &contacts)
{
    return invoke<QMapQStringQString>("modifyLocalContacts", reqId, contacts);
}

int KestinDirectoryAdaptor::deleteLocalContact(const QString &reqId, const QString &idContact)
{
    return invoke<int>("deleteLocalContact", reqId, idContact);
}

int KestinDirectoryAdaptor::addContactToPreview(const QString &reqId, const QString &idContact)
{
    return invoke<int>("addContactToPreview", reqId, idContact);
}

int KestinDirectoryAdaptor::removeContactFromPreview(const QString &reqId, const QString &idContact)
{
    return invoke<int>("removeContactFromPreview", reqId, idContact);
}

int KestinDirectoryAdaptor::updateContactsPreview(const QString &reqId, const QStringList &contactsIds,
                                                  bool isPreviewed)
{
    return invoke<int>("updateContactsPreview", reqId, contactsIds, isPreviewed);
}

ListContact KestinDirectoryAdaptor::getContactById(const QString &idContact)
{
    return invoke<ListContact>("getContactById", idContact);
}

ListContact KestinDirectoryAdaptor::getLocalContactByIMAddress(const QString &imAddress)
{
    return invoke<ListContact>("getLocalContactByIMAddress", imAddress);
}

ListContact KestinDirectoryAdaptor::getContactToMerge(const QString &imAddress, const QString &phoneNumber,
                                                      const QString &extentionPhone)
{
    return invoke<ListContact>("getContactToMerge", imAddress, phoneNumber, extentionPhone);
}

ListContact KestinDirectoryAdaptor::getLocalContactByEmailAddress(const QString &emailAddress)
{
    return invoke<ListContact>("getLocalContactByEmailAddress", emailAddress);
}

ListContact KestinDirectoryAdaptor::getAllContactsInPreview(int startInd, int length)
{
    return invoke<ListContact>("getAllContactsInPreview", startInd, length);
}

ListContact KestinDirectoryAdaptor::getContactsByType(int type)
{
    return invoke<ListContact>("getContactsByType", type);
}

ListContact KestinDirectoryAdaptor::getLocalContacts(int startInd, int length)
{
    return invoke<ListContact>("getLocalContacts", startInd, length);
}

ListContact KestinDirectoryAdaptor::getLocalContacts(const QString &phoneNumber)
{
    return invoke<ListContact>("getLocalContacts", phoneNumber);
}

int KestinDirectoryAdaptor::startSearchContactByName(const QString &searchId, const QString &name, int nbContacts,
                                                     bool localOnly)
{
    return invoke<int>("startSearchContactByName", searchId, name, nbContacts, localOnly);
}

int KestinDirectoryAdaptor::startSearchContactByAllFields(const QString &searchId, const QString &criteria,
                                                          bool localOnly)
{
    return invoke<int>("startSearchContactByAllFields", searchId, criteria, localOnly);
}

int KestinDirectoryAdaptor::startSearchContactByPhoneNumber(const QString &searchId, const QString &phoneNumber,
                                                            bool localOnly)
{
    return invoke<int>("startSearchContactByPhoneNumber", searchId, phoneNumber, localOnly);
}

int KestinDirectoryAdaptor::startSearchContactByIMAddress(const QString &searchId, const QString &imAddress,
                                                          bool localOnly)
{
    return invoke<int>("startSearchContactByIMAddress", searchId, imAddress, localOnly);
}

ListContactSummary KestinDirectoryAdaptor::getSearchResults(const QString &searchId, int startInd, int length)
{
    return invoke<ListContactSummary>("getSearchResults", searchId, startInd, length);
}

Contact KestinDirectoryAdaptor::getContactFromSearch(const QString &searchId, const QString &contactId)
{
    return invoke<Contact>("getContactFromSearch", searchId, contactId);
}

int KestinDirectoryAdaptor::purgeSearchResults(const QString &searchId)
{
    return invoke<int>("purgeSearchResults", searchId);
}

QString KestinDirectoryAdaptor::copyContactToLocal(const QString &idContact)
{
    return invoke<QString>("copyContactToLocal", idContact);
}

QString KestinDirectoryAdaptor::getImAddressByContactId(const QString &idContact)
{
    return invoke<QString>("getImAddressByContactId", idContact);
}

int KestinDirectoryAdaptor::getContactTypeById(const QString &contactId)
{
    return invoke<int>("getContactTypeById", contactId);
}

ListSetting KestinDirectoryAdaptor::defaultContactsChanged(const Setting &setting)
{
    return invoke<ListSetting>("defaultContactsChanged", setting);
}

ListSetting KestinDirectoryAdaptor::dirMaxContactChanged(const Setting &setting)
{
    return invoke<ListSetting>("dirMaxContactChanged", setting);
}

ListSetting KestinDirectoryAdaptor::dirSearchModeChanged(const Setting &setting)
{
    return invoke<ListSetting>("dirSearchModeChanged", setting);
}

ListSetting KestinDirectoryAdaptor::removeHttpsFromPhotoUrlChanged(const Setting &setting)
{
    return invoke<ListSetting>("removeHttpsFromPhotoUrlChanged", setting);
}

ListSetting KestinDirectoryAdaptor::userPhotoChanged(const Setting &setting)
{
    return invoke<ListSetting>("userPhotoChanged", setting);
}

void KestinDirectoryAdaptor::exportToXml(const QString &path, int pageSize, bool full, const QString &id,
                                         const QString &deviceId, const QDateTime &createdDate,
                                         const QDateTime &previousExportDate)
{
    invokeVoid("exportToXml", path, pageSize, full, id, deviceId, createdDate, previousExportDate);
}

void KestinDirectoryAdaptor::importFromXml(const QString &path)
{
    invokeVoid("importFromXml", path);
}

MapQStringCapability KestinDirectoryAdaptor::getCapabilities()
{
    return invoke<MapQStringCapability>("getCapabilities");
}

MapQStringCapability KestinDirectoryAdaptor::getCapabilities(int listId)
{
    return invoke<MapQStringCapability>("getCapabilities", listId);
}

Capability KestinDirectoryAdaptor::getCapability(const QString &name)
{
    return invoke<Capability>("getCapability", name);
}

Capability KestinDirectoryAdaptor::getCapability(int listId, const QString &name)
{
    return invoke<Capability>("getCapability", listId, name);
}

#include "moc_KestinDirectoryAdaptor.cpp"
