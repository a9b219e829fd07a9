// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectoryEntry.h"
#include "platform/records/PlatformEvents.h"

#include <QObject>

/// One search in a company directory, which gives its entries in packets. Deleting it stops it. Main thread only.
class DirectorySearch : public QObject
{
    Q_OBJECT

public:
    /// Asks for the next packet; answered by one packet(), never during the call. Not to be called while a packet is
    /// under way, nor after the last.
    virtual void next() = 0;

Q_SIGNALS:
    void packet(const DirectoryEntries &entries, PacketStatus status);
};
