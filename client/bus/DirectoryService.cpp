// SPDX-License-Identifier: Apache-2.0
#include "client/bus/DirectoryService.h"

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
    return m_bus.asyncCall(module, QStringLiteral("createLocalContact"), {requestId, QVariant::fromValue(contact)});
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

QString DirectoryService::newRequestId()
{
    return QLatin1String("kestin-dir-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
}
