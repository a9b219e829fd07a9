// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectoryQuery.h"
#include "peers/wsmanager/company/DirectorySearch.h"

#include <QObject>

#include <memory>

/// A company directory. Main thread only; no call waits for a server.
class DirectorySource : public QObject
{
    Q_OBJECT

public:
    /// Begins to work; false, with an error line, when that makes no sense.
    virtual bool open() = 0;
    virtual bool isAvailable() const = 0;
    /// To be called when the directory did not answer in time: it may be gone.
    virtual void verify() = 0;
    /// A search that outlives the source gives no more packets. The query has no problem.
    virtual std::unique_ptr<DirectorySearch> search(const DirectoryQuery &query) = 0;
    /// Deletes it, when what it waits for on a server has come to an end. Nobody needs it, or a search of it, any more.
    virtual void retire() = 0;

Q_SIGNALS:
    /// The availability has changed; it begins as false.
    void availabilityChanged(bool isAvailable);
};
