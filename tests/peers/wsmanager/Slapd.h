// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>
#include <QTemporaryDir>

/// A directory server of its own with the sample company in it, on a socket in a temporary folder; ended with the
/// object. Its administrator is cn=admin,dc=example,dc=org with the password "secret".
class Slapd
{
public:
    /// `settings` stand before, `limits` in the section of the database; `entries` is an LDIF file.
    explicit Slapd(const QByteArray &settings = {}, const QByteArray &limits = {},
                   const QString &entries = QStringLiteral(KESTIN_SAMPLES "/company.ldif"));
    ~Slapd();

    /// Serves on a socket and on a free port of the loopback, and with TLS on another port when asked to.
    bool start(bool withTls = false);
    void stop();
    /// Lets it hang, and go on.
    void freeze(bool isFrozen);

    QString url() const;
    QString plainUrl() const { return QString("ldap://127.0.0.1:%1").arg(m_plainPort); }
    QString tlsUrl() const { return QString("ldaps://127.0.0.1:%1").arg(m_tlsPort); }
    QString file(const QString &name) const { return m_folder.filePath(name); }
    /// Waits until it has logged the text.
    bool waitForLog(const QByteArray &text);

private:
    bool load();

    const QString m_entries;
    QTemporaryDir m_folder;
    QProcess m_server;
    QByteArray m_log;
    bool m_isLoaded = false;
    int m_plainPort = 0;
    int m_tlsPort = 0;
};
