// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/ldif/LdifSource.h"

#include "peers/wsmanager/company/DnText.h"
#include "peers/wsmanager/ldif/EntryMatcher.h"
#include "peers/wsmanager/ldif/LdifFile.h"
#include "platform/framework/KestinLogger.h"

#include <QTimer>

#include <utility>

namespace {

/// Goes through the entries as far as each packet needs.
class LdifSearch : public DirectorySearch
{
public:
    LdifSearch(DirectoryEntries entries, const DirectoryQuery &query, const DirectoryConfig &config)
        : m_entries(std::move(entries))
        , m_matcher(query, config.objectClass)
        , m_pageSize(config.pageSize)
        , m_left(config.maxResults)
    {
    }

    void next() override { QMetaObject::invokeMethod(this, &LdifSearch::gather, Qt::QueuedConnection); }

private:
    void gather()
    {
        DirectoryEntries found;
        for (; m_position < m_entries.size() && m_left > 0; ++m_position) {
            const DirectoryEntry &entry = m_entries.at(m_position);
            if (!m_matcher.matches(entry))
                continue;
            if (found.size() == m_pageSize)
                break;
            found.append(entry);
            --m_left;
        }
        const bool isLast = m_position == m_entries.size() || m_left == 0;
        Q_EMIT packet(found, isLast ? PacketStatus::Finished : PacketStatus::More);
    }

    const DirectoryEntries m_entries;
    const EntryMatcher m_matcher;
    const int m_pageSize;
    int m_left;
    qsizetype m_position = 0;
};

} // namespace

LdifSource::LdifSource(const DirectoryConfig &config)
    : m_config(config)
{
}

bool LdifSource::open()
{
    const LdifFile file = LdifFile::read(m_config.ldif);
    if (file.problem) {
        KestinLogger::error("The company directory %1", *file.problem);
        return false;
    }
    const QString base = DnText::normalized(m_config.base.toUtf8());
    for (const DirectoryEntry &entry : file.entries) {
        if (DnText::isWithin(entry.dn, base))
            m_entries.append(entry);
    }
    m_isOpen = true;
    KestinLogger::info("%1 entries read from %2", m_entries.size(), m_config.ldif);
    // Told when the event loop runs, and with it the module's name is there to be called.
    QTimer::singleShot(0, this, [this] { Q_EMIT availabilityChanged(true); });
    return true;
}

std::unique_ptr<DirectorySearch> LdifSource::search(const DirectoryQuery &query)
{
    if (query.dn.isEmpty())
        return std::make_unique<LdifSearch>(m_entries, query, m_config);
    const QString dn = DnText::normalized(query.dn.toUtf8());
    DirectoryEntries asked = m_entries;
    asked.removeIf([&dn](const DirectoryEntry &entry) { return entry.dn.compare(dn, Qt::CaseInsensitive) != 0; });
    return std::make_unique<LdifSearch>(asked, query, m_config);
}

#include "moc_LdifSource.cpp"
