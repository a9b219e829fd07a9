// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/ldap/LdapSource.h"

#include "peers/wsmanager/company/DnText.h"
#include "peers/wsmanager/company/LdapFilter.h"
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
        if (LdapWorker *worker = m_worker)
            worker->cancel();
    }
    void next() override
    {
        if (m_worker)
            m_worker->wantPacket();
    }

private:
    QPointer<LdapWorker> m_worker;
};

/// Finds nothing.
class NoSearch : public DirectorySearch
{
public:
    void next() override
    {
        QMetaObject::invokeMethod(
            this, [this] { Q_EMIT packet({}, PacketStatus::Finished); }, Qt::QueuedConnection);
    }
};

/// The base that the library is configured with.
QString baseOfLibrary()
{
    char *base = nullptr;
    ldap_get_option(nullptr, LDAP_OPT_DEFBASE, &base);
    const LdapText owned(base);
    return QString::fromUtf8(base);
}

} // namespace

LdapSource::LdapSource(const DirectoryConfig &config)
    : m_config(config)
    , m_base(baseOfLibrary())
{
    // That was the library's first call, which sets up what all its connections share; two threads must not do it at a
    // time.
    if (!config.base.isEmpty())
        m_base = config.base;
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
    const auto problem = m_config.server.usesTls() ? LdapConnection::setUpTls(m_config.server) : std::nullopt;
    if (problem)
        KestinLogger::error("The directory server %1 cannot be used: %2", m_config.server.url, *problem);
    else
        verify();
    return !problem;
}

void LdapSource::verify()
{
    if (!m_look && !m_isRetired)
        m_look = start(std::nullopt);
}

void LdapSource::retire()
{
    m_isRetired = true;
    m_retry.stop();
    const QList<LdapWorker *> workers = findChildren<LdapWorker *>();
    for (LdapWorker *worker : workers) {
        disconnect(worker, &LdapWorker::failed, this, nullptr);
        worker->cancel();
    }
    deleteIfUnused();
}

void LdapSource::deleteIfUnused()
{
    if (m_isRetired && findChildren<LdapWorker *>().isEmpty())
        deleteLater();
}

std::unique_ptr<DirectorySearch> LdapSource::search(const DirectoryQuery &query)
{
    // Whoever knows a name elsewhere on the server is told nothing of it.
    if (!query.dn.isEmpty() &&
        !DnText::isWithin(DnText::normalized(query.dn.toUtf8()), DnText::normalized(m_base.toUtf8())))
        return std::make_unique<NoSearch>();
    return std::make_unique<LdapSearch>(start(requestFor(query)));
}

LdapWorker *LdapSource::start(const std::optional<LdapRequest> &request)
{
    auto *worker = new LdapWorker(m_config.server, request);
    worker->setParent(this);
    connect(worker, &LdapWorker::opened, this, &LdapSource::noteOpened);
    connect(worker, &LdapWorker::failed, this, request ? &LdapSource::noteFailedSearch : &LdapSource::noteFailedLook);
    connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    connect(worker, &QObject::destroyed, this, &LdapSource::deleteIfUnused);
    worker->start();
    return worker;
}

LdapRequest LdapSource::requestFor(const DirectoryQuery &query) const
{
    LdapRequest request;
    request.base = query.dn.isEmpty() ? m_base : query.dn;
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

void LdapSource::noteFailedSearch(const QString &text)
{
    warn("A search on the directory server %1 has failed: %2", text);
    if (m_isAvailable)
        verify();
}

void LdapSource::noteFailedLook(const QString &text)
{
    m_retry.start();
    warn("The directory server %1 cannot be used: %2", text);
    if (!m_isAvailable)
        return;
    m_isAvailable = false;
    Q_EMIT availabilityChanged(false);
}

void LdapSource::warn(const char *pattern, const QString &text)
{
    // One line for each reason, not for each attempt.
    const QString failure = QLatin1String(pattern) + text;
    if (failure != m_lastFailure)
        KestinLogger::warning(pattern, m_config.server.url, text);
    m_lastFailure = failure;
}

#include "moc_LdapSource.cpp"
