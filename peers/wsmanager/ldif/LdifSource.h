// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectoryConfig.h"
#include "peers/wsmanager/company/DirectorySource.h"

/// A company directory that is an LDIF file, read once.
class LdifSource : public DirectorySource
{
    Q_OBJECT

public:
    explicit LdifSource(const DirectoryConfig &config);

    bool open() override;
    bool isAvailable() const override { return m_isOpen; }
    void verify() override {}
    std::unique_ptr<DirectorySearch> search(const DirectoryQuery &query) override;
    void retire() override { deleteLater(); }

private:
    const DirectoryConfig m_config;
    DirectoryEntries m_entries; // those below the base
    bool m_isOpen = false;
};
