// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/bus/QueryBuilder.h"
#include "peers/wsmanager/bus/RunningSearch.h"
#include "peers/wsmanager/company/DirectoryConfig.h"
#include "peers/wsmanager/company/DirectorySource.h"
#include "platform/framework/KestinModule.h"

#include <functional>
#include <map>
#include <optional>

/// The module "WSManager", as far as the directory needs it: searches in the company directory. What it is asked for is
/// answered by events; every question gets its answer, whatever the company directory does. Events tell when it comes
/// and when it ends in order.
class WSManager : public KestinModule
{
    Q_OBJECT

public:
    explicit WSManager(const DirectoryConfig &config);
    ~WSManager() override;

    bool init() override;
    bool run() override;

    // The bus methods.
    bool getServiceRight(const QString &right) const;
    void udaGetAttributes(const QString &reqId);
    void udaGetAttributeProperties(const QString &reqId, const QString &attribute);
    void udaGetOperators(const QString &reqId);
    void udaGetDirectories(const QString &reqId);
    void udaSearchByFullName(const QString &searchId, const QString &name, const QStringList &attributes,
                             const QStringList &values);
    void udaSearch(const QString &searchId, const DirectoryQuery &query);
    void udaGetNextResults(const QString &searchId);
    void udaStopSearch(const QString &searchId);
    void udaGetContactProfile(const QString &reqId, const QString &contactId);
    void getAttributeTypeByContactId(const QString &reqId, const QString &contactId, const QString &attribute);
    void makeDialableCallNumber(const QString &reqId, const QString &number);

    const QueryBuilder &queries() const { return m_queries; }

    /// More searches and look-ups at a time are refused.
    static constexpr int maxSearches = 16;

private:
    using Searches = std::map<QString, std::unique_ptr<RunningSearch>>;
    using Found = std::function<void(const ListContact &contacts)>;

    std::optional<QString> startSearch(const QString &searchId, const DirectoryQuery &query);
    void lookUp(const QString &contactId, const Found &found);
    std::unique_ptr<RunningSearch> newSearch();
    void end(Searches &searches, const QString &id);
    void answerNextResults(const QString &searchId, const DirectoryEntries &entries, PacketStatus status);
    void tellAvailability(bool isAvailable);
    void tellStart();
    void tellEnd();
    void tell(QLatin1String name, bool isAvailable);
    ListContact contactsOf(const DirectoryEntries &entries) const;
    void raise(QLatin1String name, const QString &reqId, int status, const QString &response = QStringLiteral("OK"),
               const QVariant &result = QVariant());

    const DirectoryConfig m_config;
    QueryBuilder m_queries;
    std::unique_ptr<DirectorySource> m_source;
    Searches m_searches; // by the caller's id; they use the source
    Searches m_lookUps;  // by a number of our own
    int m_lookUpCount = 0;
};
