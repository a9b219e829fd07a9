// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/sync/SyncFile.h"
#include "platform/records/Contact.h"

#include <QSet>

/// What an import of a synchronisation file would do to the contacts that are there, and whether the file is about
/// them. Ids are counted from 1 on every phone, so those of another phone's file fit, and mean other people.
class SyncPlan
{
public:
    explicit SyncPlan(const ListContact &stored);

    void take(const SyncEntry &entry);

    int created() const { return m_created; }
    int changed() const { return m_changed; }
    int kept() const { return m_kept; }
    int removed() const { return int(m_stored.size() - m_seen.size()); }
    /// Entries with an id that this phone does not have. They are not imported.
    int unknown() const { return m_unknown; }
    /// Whole contacts that have nothing in common with the contact of their id: no name, number or address, neither the
    /// other side's id nor the date of the last change.
    int foreign() const { return m_foreign; }

private:
    QHash<QString, Contact> m_stored;
    QSet<QString> m_seen;
    int m_created = 0;
    int m_changed = 0;
    int m_kept = 0;
    int m_unknown = 0;
    int m_foreign = 0;
};
