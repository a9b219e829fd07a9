// SPDX-License-Identifier: Apache-2.0
#include "client/bus/DirectoryService.h"

#include "platform/records/KestinBus.h"

#include <QUuid>

ListContact DirectoryService::page(int start, int length) const
{
    return call<ListContact>("getLocalContacts", {start, length});
}

ListContact DirectoryService::previewPage(int start, int length) const
{
    return call<ListContact>("getAllContactsInPreview", {start, length});
}

ListContact DirectoryService::byType(qint32 type) const
{
    return call<ListContact>("getContactsByType", {type});
}

ListContact DirectoryService::byNumber(const QString &number) const
{
    return call<ListContact>("getLocalContacts", {number});
}

std::optional<Contact> DirectoryService::byId(const QString &id) const
{
    const auto contacts = call<ListContact>("getContactById", {id});
    return contacts.isEmpty() ? std::nullopt : std::optional(contacts.first());
}

int DirectoryService::create(const QString &requestId, const Contact &contact) const
{
    return call<int>("createLocalContact", {requestId, QVariant::fromValue(contact)});
}

QDBusPendingCall DirectoryService::createAsync(const QString &requestId, const Contact &contact) const
{
    return m_bus.asyncCall(ModuleName::directory, QStringLiteral("createLocalContact"),
                           {requestId, QVariant::fromValue(contact)});
}

QDBusPendingCall DirectoryService::modifyAsync(const QString &requestId, const Contact &contact) const
{
    return m_bus.asyncCall(ModuleName::directory, QStringLiteral("modifyLocalContact"),
                           {requestId, QVariant::fromValue(contact)});
}

int DirectoryService::modify(const QString &requestId, const Contact &contact) const
{
    return call<int>("modifyLocalContact", {requestId, QVariant::fromValue(contact)});
}

int DirectoryService::remove(const QString &requestId, const QString &id) const
{
    return call<int>("deleteLocalContact", {requestId, id});
}

int DirectoryService::addToPreview(const QString &requestId, const QString &id) const
{
    return call<int>("addContactToPreview", {requestId, id});
}

int DirectoryService::removeFromPreview(const QString &requestId, const QString &id) const
{
    return call<int>("removeContactFromPreview", {requestId, id});
}

int DirectoryService::startSearchByName(const QString &searchId, const QString &name, int announced,
                                        bool localOnly) const
{
    return call<int>("startSearchContactByName", {searchId, name, announced, localOnly});
}

int DirectoryService::startSearchByNumber(const QString &searchId, const QString &number, bool localOnly) const
{
    return call<int>("startSearchContactByPhoneNumber", {searchId, number, localOnly});
}

ListContactSummary DirectoryService::searchResults(const QString &searchId, int start, int length) const
{
    return call<ListContactSummary>("getSearchResults", {searchId, start, length});
}

Contact DirectoryService::contactFromSearch(const QString &searchId, const QString &contactId) const
{
    return call<Contact>("getContactFromSearch", {searchId, contactId});
}

int DirectoryService::purgeSearch(const QString &searchId) const
{
    return call<int>("purgeSearchResults", {searchId});
}

void DirectoryService::copyToLocal(const QString &id) const
{
    call<QString>("copyContactToLocal", {id});
}

QDBusPendingCall DirectoryService::exportToXml(const ExportRequest &request) const
{
    return m_bus.asyncCall(ModuleName::directory, QStringLiteral("exportToXml"),
                           {request.path, request.pageSize, request.full, request.id, request.deviceId, request.created,
                            request.previousExport});
}

QDBusPendingCall DirectoryService::importFromXml(const QString &path) const
{
    return m_bus.asyncCall(ModuleName::directory, QStringLiteral("importFromXml"), {path});
}

QString DirectoryService::newRequestId()
{
    return QLatin1String("kestin-dir-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
}
