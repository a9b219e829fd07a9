// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/BusSession.h"
#include "platform/records/Contact.h"
#include "platform/records/KestinBus.h"

#include <optional>

/// What an export of the synchronisation file is told; see the bus documentation for the meaning of each.
struct ExportRequest
{
    QString path; ///< absolute: the directory has a working folder of its own
    int pageSize = 0;
    bool full = false;
    QString id;
    QString deviceId;
    QDateTime created;
    QDateTime previousExport;
};

/// The calls of the contact directory, typed. Every call throws what BusSession::call throws. Methods that answer a
/// ResultCode return it. RefusalText tells what the code means.
class DirectoryService
{
public:
    explicit DirectoryService(const BusSession &bus)
        : m_bus(bus)
    {
    }

    /// `length` contacts from `start` on, in the order of their ids and, inside the answer, by name.
    ListContact page(int start, int length) const;
    ListContact previewPage(int start, int length) const;
    ListContact byType(qint32 type) const;
    /// Everybody with this number. The number has to be in canonical form.
    ListContact byNumber(const QString &number) const;
    std::optional<Contact> byId(const QString &id) const;

    /// `requestId` comes back in the event that tells of the change.
    int create(const QString &requestId, const Contact &contact) const;
    QDBusPendingCall createAsync(const QString &requestId, const Contact &contact) const;
    QDBusPendingCall modifyAsync(const QString &requestId, const Contact &contact) const;
    int modify(const QString &requestId, const Contact &contact) const;
    int remove(const QString &requestId, const QString &id) const;
    int addToPreview(const QString &requestId, const QString &id) const;
    int removeFromPreview(const QString &requestId, const QString &id) const;

    /// A search answers with events that carry `searchId`; see SearchRun. `announced` is how many contacts the events
    /// of a search by name tell.
    int startSearchByName(const QString &searchId, const QString &name, int announced, bool localOnly) const;
    int startSearchByNumber(const QString &searchId, const QString &number, bool localOnly) const;
    /// The results of a search that is completed, in the order of the phone.
    ListContactSummary searchResults(const QString &searchId, int start, int length) const;
    /// The whole record of one of them, with canonical numbers.
    Contact contactFromSearch(const QString &searchId, const QString &contactId) const;
    int purgeSearch(const QString &searchId) const;
    /// Asks the company directory for the contact. An event with the id as its request id tells that the contact was
    /// created.
    void copyToLocal(const QString &id) const;

    /// Both answer nothing. An event tells how they ended; see SyncRun.
    QDBusPendingCall exportToXml(const ExportRequest &request) const;
    QDBusPendingCall importFromXml(const QString &path) const;

    /// A request id that no other caller has.
    static QString newRequestId();

private:
    template <typename T>
    T call(const char *method, const QVariantList &arguments) const
    {
        return m_bus.call<T>(ModuleName::directory, QLatin1String(method), arguments);
    }

    const BusSession &m_bus;
};
