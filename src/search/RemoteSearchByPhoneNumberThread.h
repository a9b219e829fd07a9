// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/search/RemoteSearchThread.h"

/// Searches the company directory by phone number; most of its texts name it shorter.
class RemoteSearchByPhoneNumberThread : public RemoteSearchThread
{
    Q_OBJECT

public:
    using RemoteSearchThread::RemoteSearchThread;

Q_SIGNALS:
    void signal_searchByPhoneNumber(const QString &searchId, const QString &searchText);

protected:
    void requestSearch() override { Q_EMIT signal_searchByPhoneNumber(m_searchId, m_searchText); }
    const Texts &texts() const override;
};
