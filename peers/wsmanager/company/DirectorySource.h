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
    /// The search must not outlive the source. The query has no problem.
    virtual std::unique_ptr<DirectorySearch> search(const DirectoryQuery &query) = 0;

Q_SIGNALS:
    /// The availability has changed; it begins as false.
    void availabilityChanged(bool isAvailable);
};
