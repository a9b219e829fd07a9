// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/bus/QueryBuilder.h"
#include "peers/wsmanager/bus/RunningSearch.h"
#include "peers/wsmanager/company/DirectoryConfig.h"
#include "peers/wsmanager/company/DirectorySource.h"
#include "platform/framework/KestinModule.h"

#include <QPointer>

#include <functional>
#include <map>
#include <memory>
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

    /// Serves this configuration from now on; a search that runs ends with the one that it began with. False, with an
    /// error line and without a change, when it makes no sense.
    [[nodiscard]] bool reload(const DirectoryConfig &config);

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

    const QueryBuilder &queries() const { return m_served->queries; }

    /// The directory that the configuration names, not yet opened.
    static std::unique_ptr<DirectorySource> sourceOf(const DirectoryConfig &config);

    /// More searches and look-ups at a time are refused.
    static constexpr int maxSearches = 16;

private:
    using Searches = std::map<QString, std::unique_ptr<RunningSearch>>;
    using Found = std::function<void(const ListContact &contacts)>;

    /// A configuration and the directory that it names, which belongs to the module.
    struct Served
    {
        Served(const DirectoryConfig &configuration, WSManager &module);
        ~Served();
        Q_DISABLE_COPY_MOVE(Served)

        ListContact contactsOf(const DirectoryEntries &entries) const;

        const DirectoryConfig config;
        const QueryBuilder queries;
        const QPointer<DirectorySource> source;
    };

    bool open(const Served &served);
    std::optional<QString> startSearch(const QString &searchId, const DirectoryQuery &query);
    void lookUp(const QString &contactId, const Found &found);
    std::unique_ptr<RunningSearch> newSearch();
    void end(Searches &searches, const QString &id);
    void answerNextResults(const QString &searchId, const ListContact &contacts, PacketStatus status);
    void tellAvailability(bool isAvailable);
    void tellStart();
    void tellEnd();
    void tell(QLatin1String name, bool isAvailable);
    void raise(QLatin1String name, const QString &reqId, int status, const QString &response = QStringLiteral("OK"),
               const QVariant &result = QVariant());

    std::shared_ptr<const Served> m_served; // the searches have theirs
    Searches m_searches;                    // by the caller's id
    Searches m_lookUps;                     // by a number of our own
    int m_lookUpCount = 0;
};
