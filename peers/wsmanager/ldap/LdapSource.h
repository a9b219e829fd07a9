// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectoryConfig.h"
#include "peers/wsmanager/company/DirectorySource.h"
#include "peers/wsmanager/ldap/LdapWorker.h"

#include <QPointer>
#include <QTimer>

/// A company directory on an LDAP server. It is available from when the server accepted the bind until a look at it
/// fails; then the server is looked for from time to time. A search that fails is a reason to look, and no more.
class LdapSource : public DirectorySource
{
    Q_OBJECT

public:
    explicit LdapSource(const DirectoryConfig &config);
    /// Ends what is under way; a connection that is just being built is waited for.
    ~LdapSource() override;

    bool open() override;
    bool isAvailable() const override { return m_isAvailable; }
    void verify() override;
    std::unique_ptr<DirectorySearch> search(const DirectoryQuery &query) override;
    void retire() override;

private:
    LdapWorker *start(const std::optional<LdapRequest> &request);
    LdapRequest requestFor(const DirectoryQuery &query) const;
    void noteOpened();
    void noteFailedSearch(const QString &text);
    void noteFailedLook(const QString &text);
    void warn(const char *pattern, const QString &text);
    void deleteIfUnused();

    const DirectoryConfig m_config;
    QString m_base;
    QTimer m_retry;
    QPointer<LdapWorker> m_look;
    bool m_isAvailable = false;
    bool m_isRetired = false;
    QString m_lastFailure;
};
