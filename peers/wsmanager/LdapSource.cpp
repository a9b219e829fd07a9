// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/LdapSource.h"

#include "peers/wsmanager/LdapFilter.h"
#include "platform/framework/KestinLogger.h"

#include <chrono>

namespace {

class LdapSearch : public DirectorySearch
{
public:
    explicit LdapSearch(LdapWorker *worker)
        : m_worker(worker)
    {
        connect(worker, &LdapWorker::packet, this, &DirectorySearch::packet);
    }
    ~LdapSearch() override
    {
        if (m_worker)
            m_worker->cancel();
    }
    void next() override
    {
        if (m_worker)
            m_worker->wantPacket();
    }

private:
    QPointer<LdapWorker> m_worker;
};

} // namespace

LdapSource::LdapSource(const DirectoryConfig &config)
    : m_config(config)
{
    // The library's first call sets up what all its connections share, which two threads must not do at a time.
    int version = 0;
    ldap_get_option(nullptr, LDAP_OPT_PROTOCOL_VERSION, &version);
    m_retry.setInterval(std::chrono::seconds(config.retrySeconds));
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &LdapSource::verify);
}

LdapSource::~LdapSource()
{
    const QList<LdapWorker *> workers = findChildren<LdapWorker *>();
    for (LdapWorker *worker : workers)
        worker->cancel();
    for (LdapWorker *worker : workers)
        worker->wait();
}

bool LdapSource::open()
{
    if (m_config.server.showsSecret())
        KestinLogger::warning("The password goes to %1 in the clear: use ldaps:// or startTls", m_config.server.url);
    verify();
    return true;
}

void LdapSource::verify()
{
    if (!m_look)
        m_look = start(std::nullopt);
}

std::unique_ptr<DirectorySearch> LdapSource::search(const DirectoryQuery &query)
{
    return std::make_unique<LdapSearch>(start(requestFor(query)));
}

LdapWorker *LdapSource::start(const std::optional<LdapRequest> &request)
{
    auto *worker = new LdapWorker(m_config.server, request);
    worker->setParent(this);
    connect(worker, &LdapWorker::opened, this, &LdapSource::noteOpened);
    connect(worker, &LdapWorker::failed, this, &LdapSource::noteFailure);
    connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    worker->start();
    return worker;
}

LdapRequest LdapSource::requestFor(const DirectoryQuery &query) const
{
    LdapRequest request;
    request.base = query.dn.isEmpty() ? m_config.base : query.dn;
    request.scope = query.dn.isEmpty() ? LDAP_SCOPE_SUBTREE : LDAP_SCOPE_BASE;
    request.filter = LdapFilter::of(query, m_config.objectClass, m_config.filter);
    request.attributes = m_config.attributes.attributeNames();
    request.pageSize = m_config.pageSize;
    request.sizeLimit = m_config.maxResults;
    return request;
}

void LdapSource::noteOpened()
{
    m_retry.stop();
    m_lastFailure.clear();
    if (m_isAvailable)
        return;
    m_isAvailable = true;
    KestinLogger::info("The directory server %1 answers", m_config.server.url);
    Q_EMIT availabilityChanged(true);
}

void LdapSource::noteFailure(const QString &text)
{
    m_retry.start();
    // One line for each reason, not for each attempt.
    if (text != m_lastFailure)
        KestinLogger::warning("The directory server %1 cannot be used: %2", m_config.server.url, text);
    m_lastFailure = text;
    if (!m_isAvailable)
        return;
    m_isAvailable = false;
    Q_EMIT availabilityChanged(false);
}
