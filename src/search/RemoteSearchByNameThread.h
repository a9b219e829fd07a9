// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/search/RemoteSearchThread.h"

/// Searches the company directory by full name.
class RemoteSearchByNameThread : public RemoteSearchThread
{
    Q_OBJECT

public:
    using RemoteSearchThread::RemoteSearchThread;

Q_SIGNALS:
    void signal_searchByFullName(const QString &searchId, const QString &searchText);

protected:
    void requestSearch() override { Q_EMIT signal_searchByFullName(m_searchId, m_searchText); }
    const Texts &texts() const override;
};
