// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/bus/WSManager.h"

#include "peers/wsmanager/bus/NumberService.h"
#include "peers/wsmanager/ldap/LdapSource.h"
#include "peers/wsmanager/ldif/LdifSource.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/WebServiceCalls.h"

#include <QCoreApplication>
#include <QTimer>

#include <utility>

std::unique_ptr<DirectorySource> WSManager::sourceOf(const DirectoryConfig &config)
{
    if (config.ldif.isEmpty())
        return std::make_unique<LdapSource>(config);
    return std::make_unique<LdifSource>(config);
}

WSManager::Served::Served(const DirectoryConfig &configuration, WSManager &module)
    : config(configuration)
    , queries(config.attributes)
    , source(sourceOf(config).release())
{
    source->setParent(&module);
}

WSManager::Served::~Served()
{
    if (source)
        source->retire();
}

WSManager::WSManager(const DirectoryConfig &config)
    : KestinModule(ModuleName::webServiceManager)
    , m_served(std::make_shared<Served>(config, *this))
{
}

WSManager::~WSManager() = default;

bool WSManager::init()
{
    registerDBusContact();
    registerDBusQMapQStringQStringList();
    return true;
}

bool WSManager::run()
{
    // Once the event loop runs the name is on the bus: who hears of it can call.
    QTimer::singleShot(0, this, &WSManager::tellStart);
    return open(*m_served);
}

bool WSManager::open(const Served &served)
{
    connect(served.source, &DirectorySource::availabilityChanged, this, &WSManager::tellAvailability);
    return served.source->open();
}

bool WSManager::reload(const DirectoryConfig &config)
{
    const auto next = std::make_shared<Served>(config, *this);
    if (!open(*next))
        return false;
    const auto former = std::exchange(m_served, next);
    former->source->disconnect(this);
    if (former->source->isAvailable()) // the next one says when it is
        tellAvailability(false);
    return true;
}

bool WSManager::getServiceRight(const QString &right) const
{
    return right == WebServiceTerm::companyDirectory && m_served->source->isAvailable();
}

void WSManager::udaGetAttributes(const QString &reqId)
{
    const bool isAvailable = m_served->source->isAvailable();
    raise(EventName::wsAttributes, reqId, isAvailable ? 1 : 0,
          isAvailable ? QStringLiteral("OK") : QStringLiteral("the directory cannot be reached"),
          m_served->queries.attributeNames());
}

void WSManager::udaGetAttributeProperties(const QString &reqId, const QString &attribute)
{
    QStringList sources;
    const QStringList fields = m_served->queries.fieldsOf(attribute);
    for (const QString &field : fields) {
        const QList<LdapAttribute> attributes = m_served->config.attributes.attributesOf(field);
        for (const LdapAttribute &source : attributes)
            sources.append(source.name);
    }
    const QMapQStringQString properties{{QStringLiteral("name"), attribute},
                                        {QStringLiteral("fields"), fields.join(QLatin1Char(','))},
                                        {QStringLiteral("ldap"), sources.join(QLatin1Char(','))}};
    raise(EventName::wsAttributeProperties, reqId, fields.isEmpty() ? 0 : 1,
          fields.isEmpty() ? QStringLiteral("there is no such attribute") : QStringLiteral("OK"),
          QVariant::fromValue(properties));
}

void WSManager::udaGetOperators(const QString &reqId)
{
    raise(EventName::wsOperators, reqId, 1, QStringLiteral("OK"), QueryBuilder::operatorNames());
}

void WSManager::udaGetDirectories(const QString &reqId)
{
    raise(EventName::wsDirectories, reqId, 1, QStringLiteral("OK"), QStringList{m_served->config.name});
}

void WSManager::udaSearchByFullName(const QString &searchId, const QString &name, const QStringList &attributes,
                                    const QStringList &values)
{
    DirectoryQuery query = m_served->queries.byName(name);
    if (!attributes.isEmpty() || !values.isEmpty()) {
        const QStringList equal(attributes.size(), WebServiceTerm::equal);
        const DirectoryQuery further = m_served->queries.byCriteria(WebServiceTerm::allOf, attributes, equal, values);
        query.criteria += further.criteria;
        if (!query.problem)
            query.problem = further.problem;
    }
    const auto refusal = startSearch(searchId, query);
    raise(EventName::wsSearchByFullName, searchId, refusal ? 0 : 1, refusal.value_or(QStringLiteral("OK")));
}

void WSManager::udaSearch(const QString &searchId, const DirectoryQuery &query)
{
    const auto refusal = startSearch(searchId, query);
    raise(EventName::wsSearch, searchId, refusal ? 0 : 1, refusal.value_or(QStringLiteral("OK")));
}

std::optional<QString> WSManager::startSearch(const QString &searchId, const DirectoryQuery &query)
{
    end(m_searches, searchId);
    if (query.problem)
        return query.problem;
    std::unique_ptr<RunningSearch> search = newSearch();
    if (!search)
        return QStringLiteral("too many searches are running");
    connect(search.get(), &RunningSearch::answered, this,
            [this, searchId, served = m_served](const DirectoryEntries &entries, PacketStatus status) {
                answerNextResults(searchId, served->contactsOf(entries), status);
            });
    connect(search.get(), &RunningSearch::forgotten, this, [this, searchId] { end(m_searches, searchId); });
    RunningSearch *started = search.get();
    m_searches[searchId] = std::move(search);
    NumberService::addCanonicalForms(*this, *started, query,
                                     [started, served = m_served](const DirectoryQuery &complete) {
                                         started->begin(served->source->search(complete));
                                     });
    return std::nullopt;
}

std::unique_ptr<RunningSearch> WSManager::newSearch()
{
    if (m_searches.size() + m_lookUps.size() >= maxSearches)
        return nullptr;
    const DirectoryConfig &config = m_served->config;
    auto search = std::make_unique<RunningSearch>(
        RunningSearch::Times{std::chrono::seconds(config.timeoutSeconds), std::chrono::milliseconds(config.delayMs)});
    connect(search.get(), &RunningSearch::silent, m_served->source, &DirectorySource::verify);
    return search;
}

void WSManager::end(Searches &searches, const QString &id)
{
    const auto found = searches.find(id);
    if (found == searches.end())
        return;
    // It may be telling us something just now, so it goes a little later; the search in it ends with it.
    RunningSearch *search = found->second.release();
    search->disconnect(this);
    search->setParent(this);
    search->deleteLater();
    searches.erase(found);
}

void WSManager::udaGetNextResults(const QString &searchId)
{
    const auto found = m_searches.find(searchId);
    if (found == m_searches.end())
        raise(EventName::wsNextResults, searchId, int(PacketStatus::Finished),
              QStringLiteral("there is no such search"), QVariant::fromValue(ListContact()));
    else
        found->second->ask();
}

void WSManager::answerNextResults(const QString &searchId, const ListContact &contacts, PacketStatus status)
{
    if (status != PacketStatus::More)
        end(m_searches, searchId);
    const bool isAnswer = status != PacketStatus::TimedOut;
    raise(EventName::wsNextResults, searchId, int(status),
          isAnswer ? QStringLiteral("OK") : QStringLiteral("the directory does not answer"),
          QVariant::fromValue(contacts));
}

void WSManager::udaStopSearch(const QString &searchId)
{
    const bool isRunning = m_searches.count(searchId) > 0;
    end(m_searches, searchId);
    raise(EventName::wsStopSearch, searchId, isRunning ? 1 : 0,
          isRunning ? QStringLiteral("OK") : QStringLiteral("there is no such search"));
}

void WSManager::lookUp(const QString &contactId, const Found &found)
{
    const DirectoryQuery query = QueryBuilder::byContactId(contactId);
    std::unique_ptr<RunningSearch> search = query.problem ? nullptr : newSearch();
    if (!search) {
        found({});
        return;
    }
    const QString id = QString::number(++m_lookUpCount);
    connect(search.get(), &RunningSearch::answered, this,
            [this, id, found, served = m_served](const DirectoryEntries &entries) {
                const ListContact contacts = served->contactsOf(entries.mid(0, 1));
                end(m_lookUps, id);
                found(contacts);
            });
    search->begin(m_served->source->search(query));
    search->ask();
    m_lookUps[id] = std::move(search);
}

void WSManager::udaGetContactProfile(const QString &reqId, const QString &contactId)
{
    lookUp(contactId, [this, reqId](const ListContact &contacts) {
        raise(EventName::wsContactProfile, reqId, contacts.isEmpty() ? 0 : 1,
              contacts.isEmpty() ? QStringLiteral("no such contact was found") : QStringLiteral("OK"),
              QVariant::fromValue(contacts));
    });
}

void WSManager::getAttributeTypeByContactId(const QString &reqId, const QString &contactId, const QString &attribute)
{
    lookUp(contactId, [this, reqId, attribute](const ListContact &contacts) {
        const QString value = contacts.isEmpty() ? QString() : AttributeMap::valueOf(contacts.first(), attribute);
        raise(EventName::wsAttributeByContactId, reqId, value.isEmpty() ? 0 : 1,
              value.isEmpty() ? QStringLiteral("no value was found") : QStringLiteral("OK"), value);
    });
}

void WSManager::makeDialableCallNumber(const QString &reqId, const QString &number)
{
    NumberService::makeDialable(*this, *this, number, [this, reqId](const QString &dialable) {
        raise(EventName::wsCanonizeNumber, reqId, 1, QStringLiteral("OK"), dialable);
    });
}

void WSManager::tellAvailability(bool isAvailable)
{
    tell(EventName::wsDirectoryAvailability, isAvailable);
}

void WSManager::tellStart()
{
    tell(EventName::wsManagerAvailability, true);
    // Before the name is given back.
    connect(qApp, &QCoreApplication::aboutToQuit, this, &WSManager::tellEnd);
}

void WSManager::tellEnd()
{
    if (m_served->source->isAvailable())
        tellAvailability(false);
    tell(EventName::wsManagerAvailability, false);
}

void WSManager::tell(QLatin1String name, bool isAvailable)
{
    KestinEvent event(name, {});
    event.addArgument(isAvailable ? 1 : 0, ArgumentName::status, true);
    notifyEvent(event);
}

ListContact WSManager::Served::contactsOf(const DirectoryEntries &entries) const
{
    ListContact contacts;
    for (const DirectoryEntry &entry : entries)
        contacts.append(config.attributes.contactOf(entry));
    return contacts;
}

void WSManager::raise(QLatin1String name, const QString &reqId, int status, const QString &response,
                      const QVariant &result)
{
    KestinEvent event(name, {});
    event.addArgument(reqId, ArgumentName::reqId, true);
    event.addArgument(status, ArgumentName::status, true);
    event.addArgument(response, ArgumentName::response, true);
    if (result.isValid())
        event.addArgument(result, ArgumentName::result, true);
    const bool isSent = notifyEvent(event);
    KestinLogger::debug(isSent ? "Event %1 for %2 with status %3: %4" : "Event %1 for %2 cannot be sent (%3: %4)", name,
                        reqId, status, response);
}

#include "moc_WSManager.cpp"
