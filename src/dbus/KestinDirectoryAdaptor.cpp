// SPDX-License-Identifier: Apache-2.0
#include "src/dbus/KestinDirectoryAdaptor.h"

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinLogger.h"

namespace {

[[noreturn]] void fail(const QDBusAbstractAdaptor &adaptor, const char *method)
{
    KestinLogger::debug("Adaptor::invokeMethod failed:%1", method);
    const auto *module = qobject_cast<const KestinModule *>(adaptor.parent());
    throw new KestinException(module->getModuleName(), KestinException::InvocationFailed,
                              QStringLiteral("Adaptor::invokeMethod failed: %1").arg(QLatin1String(method)));
}

/// Invokes the slot of this name on the module that the adaptor belongs to.
template <typename Result, typename... Arguments>
Result invoke(const QDBusAbstractAdaptor &adaptor, const char *resultType, const char *method, Arguments... arguments)
{
    Result result{};
    const bool invoked = QMetaObject::invokeMethod(adaptor.parent(), method, Qt::AutoConnection,
                                                   QReturnArgument<Result>(resultType, result), arguments...);
    if (!invoked)
        fail(adaptor, method);
    return result;
}

/// The same for one without a result.
template <typename... Arguments>
void invoke(const QDBusAbstractAdaptor &adaptor, const char *method, Arguments... arguments)
{
    if (!QMetaObject::invokeMethod(adaptor.parent(), method, Qt::AutoConnection, arguments...))
        fail(adaptor, method);
}

} // namespace

KestinDirectoryAdaptor::KestinDirectoryAdaptor(KestinModule *module)
    : QDBusAbstractAdaptor(module)
{
    setAutoRelaySignals(true);
}

int KestinDirectoryAdaptor::createLocalContact(const QString &reqId, const Contact &contact)
{
    return invoke<int>(*this, "int", "createLocalContact", Q_ARG(QString, reqId), Q_ARG(Contact, contact));
}

QMapQStringQString KestinDirectoryAdaptor::createLocalContacts(const QString &reqId, const ListContact &contacts)
{
    return invoke<QMapQStringQString>(*this, "QMapQStringQString", "createLocalContacts", Q_ARG(QString, reqId),
                                      Q_ARG(ListContact, contacts));
}

int KestinDirectoryAdaptor::modifyLocalContact(const QString &reqId, const Contact &contact)
{
    return invoke<int>(*this, "int", "modifyLocalContact", Q_ARG(QString, reqId), Q_ARG(Contact, contact));
}

QMapQStringQString KestinDirectoryAdaptor::modifyLocalContacts(const QString &reqId, const ListContact &contacts)
{
    return invoke<QMapQStringQString>(*this, "QMapQStringQString", "modifyLocalContacts", Q_ARG(QString, reqId),
                                      Q_ARG(ListContact, contacts));
}

int KestinDirectoryAdaptor::deleteLocalContact(const QString &reqId, const QString &idContact)
{
    return invoke<int>(*this, "int", "deleteLocalContact", Q_ARG(QString, reqId), Q_ARG(QString, idContact));
}

int KestinDirectoryAdaptor::addContactToPreview(const QString &reqId, const QString &idContact)
{
    return invoke<int>(*this, "int", "addContactToPreview", Q_ARG(QString, reqId), Q_ARG(QString, idContact));
}

int KestinDirectoryAdaptor::removeContactFromPreview(const QString &reqId, const QString &idContact)
{
    return invoke<int>(*this, "int", "removeContactFromPreview", Q_ARG(QString, reqId), Q_ARG(QString, idContact));
}

int KestinDirectoryAdaptor::updateContactsPreview(const QString &reqId, const QStringList &contactsIds,
                                                  bool isPreviewed)
{
    return invoke<int>(*this, "int", "updateContactsPreview", Q_ARG(QString, reqId), Q_ARG(QStringList, contactsIds),
                       Q_ARG(bool, isPreviewed));
}

ListContact KestinDirectoryAdaptor::getContactById(const QString &idContact)
{
    return invoke<ListContact>(*this, "ListContact", "getContactById", Q_ARG(QString, idContact));
}

ListContact KestinDirectoryAdaptor::getLocalContactByIMAddress(const QString &imAddress)
{
    return invoke<ListContact>(*this, "ListContact", "getLocalContactByIMAddress", Q_ARG(QString, imAddress));
}

ListContact KestinDirectoryAdaptor::getContactToMerge(const QString &imAddress, const QString &phoneNumber,
                                                      const QString &extentionPhone)
{
    return invoke<ListContact>(*this, "ListContact", "getContactToMerge", Q_ARG(QString, imAddress),
                               Q_ARG(QString, phoneNumber), Q_ARG(QString, extentionPhone));
}

ListContact KestinDirectoryAdaptor::getLocalContactByEmailAddress(const QString &emailAddress)
{
    return invoke<ListContact>(*this, "ListContact", "getLocalContactByEmailAddress", Q_ARG(QString, emailAddress));
}

ListContact KestinDirectoryAdaptor::getAllContactsInPreview(int startInd, int length)
{
    return invoke<ListContact>(*this, "ListContact", "getAllContactsInPreview", Q_ARG(int, startInd),
                               Q_ARG(int, length));
}

ListContact KestinDirectoryAdaptor::getContactsByType(int type)
{
    return invoke<ListContact>(*this, "ListContact", "getContactsByType", Q_ARG(int, type));
}

ListContact KestinDirectoryAdaptor::getLocalContacts(int startInd, int length)
{
    return invoke<ListContact>(*this, "ListContact", "getLocalContacts", Q_ARG(int, startInd), Q_ARG(int, length));
}

ListContact KestinDirectoryAdaptor::getLocalContacts(const QString &phoneNumber)
{
    return invoke<ListContact>(*this, "ListContact", "getLocalContacts", Q_ARG(QString, phoneNumber));
}

int KestinDirectoryAdaptor::startSearchContactByName(const QString &searchId, const QString &name, int nbContacts,
                                                     bool localOnly)
{
    return invoke<int>(*this, "int", "startSearchContactByName", Q_ARG(QString, searchId), Q_ARG(QString, name),
                       Q_ARG(int, nbContacts), Q_ARG(bool, localOnly));
}

int KestinDirectoryAdaptor::startSearchContactByAllFields(const QString &searchId, const QString &criteria,
                                                          bool localOnly)
{
    return invoke<int>(*this, "int", "startSearchContactByAllFields", Q_ARG(QString, searchId),
                       Q_ARG(QString, criteria), Q_ARG(bool, localOnly));
}

int KestinDirectoryAdaptor::startSearchContactByPhoneNumber(const QString &searchId, const QString &phoneNumber,
                                                            bool localOnly)
{
    return invoke<int>(*this, "int", "startSearchContactByPhoneNumber", Q_ARG(QString, searchId),
                       Q_ARG(QString, phoneNumber), Q_ARG(bool, localOnly));
}

int KestinDirectoryAdaptor::startSearchContactByIMAddress(const QString &searchId, const QString &imAddress,
                                                          bool localOnly)
{
    return invoke<int>(*this, "int", "startSearchContactByIMAddress", Q_ARG(QString, searchId),
                       Q_ARG(QString, imAddress), Q_ARG(bool, localOnly));
}

ListContactSummary KestinDirectoryAdaptor::getSearchResults(const QString &searchId, int startInd, int length)
{
    return invoke<ListContactSummary>(*this, "ListContactSummary", "getSearchResults", Q_ARG(QString, searchId),
                                      Q_ARG(int, startInd), Q_ARG(int, length));
}

Contact KestinDirectoryAdaptor::getContactFromSearch(const QString &searchId, const QString &contactId)
{
    return invoke<Contact>(*this, "Contact", "getContactFromSearch", Q_ARG(QString, searchId),
                           Q_ARG(QString, contactId));
}

int KestinDirectoryAdaptor::purgeSearchResults(const QString &searchId)
{
    return invoke<int>(*this, "int", "purgeSearchResults", Q_ARG(QString, searchId));
}

QString KestinDirectoryAdaptor::copyContactToLocal(const QString &idContact)
{
    return invoke<QString>(*this, "QString", "copyContactToLocal", Q_ARG(QString, idContact));
}

QString KestinDirectoryAdaptor::getImAddressByContactId(const QString &idContact)
{
    return invoke<QString>(*this, "QString", "getImAddressByContactId", Q_ARG(QString, idContact));
}

int KestinDirectoryAdaptor::getContactTypeById(const QString &contactId)
{
    return invoke<int>(*this, "int", "getContactTypeById", Q_ARG(QString, contactId));
}

ListSetting KestinDirectoryAdaptor::defaultContactsChanged(const Setting &setting)
{
    return invoke<ListSetting>(*this, "ListSetting", "defaultContactsChanged", Q_ARG(Setting, setting));
}

ListSetting KestinDirectoryAdaptor::dirMaxContactChanged(const Setting &setting)
{
    return invoke<ListSetting>(*this, "ListSetting", "dirMaxContactChanged", Q_ARG(Setting, setting));
}

ListSetting KestinDirectoryAdaptor::dirSearchModeChanged(const Setting &setting)
{
    return invoke<ListSetting>(*this, "ListSetting", "dirSearchModeChanged", Q_ARG(Setting, setting));
}

ListSetting KestinDirectoryAdaptor::removeHttpsFromPhotoUrlChanged(const Setting &setting)
{
    return invoke<ListSetting>(*this, "ListSetting", "removeHttpsFromPhotoUrlChanged", Q_ARG(Setting, setting));
}

ListSetting KestinDirectoryAdaptor::userPhotoChanged(const Setting &setting)
{
    return invoke<ListSetting>(*this, "ListSetting", "userPhotoChanged", Q_ARG(Setting, setting));
}

void KestinDirectoryAdaptor::exportToXml(const QString &path, int pageSize, bool full, const QString &id,
                                         const QString &deviceId, const QDateTime &createdDate,
                                         const QDateTime &previousExportDate)
{
    invoke(*this, "exportToXml", Q_ARG(QString, path), Q_ARG(int, pageSize), Q_ARG(bool, full), Q_ARG(QString, id),
           Q_ARG(QString, deviceId), Q_ARG(QDateTime, createdDate), Q_ARG(QDateTime, previousExportDate));
}

void KestinDirectoryAdaptor::importFromXml(const QString &path)
{
    invoke(*this, "importFromXml", Q_ARG(QString, path));
}

MapQStringCapability KestinDirectoryAdaptor::getCapabilities()
{
    return invoke<MapQStringCapability>(*this, "MapQStringCapability", "getCapabilities");
}

MapQStringCapability KestinDirectoryAdaptor::getCapabilities(int listId)
{
    return invoke<MapQStringCapability>(*this, "MapQStringCapability", "getCapabilities", Q_ARG(int, listId));
}

Capability KestinDirectoryAdaptor::getCapability(const QString &name)
{
    return invoke<Capability>(*this, "Capability", "getCapability", Q_ARG(QString, name));
}

Capability KestinDirectoryAdaptor::getCapability(int listId, const QString &name)
{
    return invoke<Capability>(*this, "Capability", "getCapability", Q_ARG(int, listId), Q_ARG(QString, name));
}
