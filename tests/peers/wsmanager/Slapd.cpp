// SPDX-License-Identifier: Apache-2.0
#include "tests/peers/wsmanager/Slapd.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QUrl>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

constexpr int limitMs = 30000;
// Debian keeps administrators' programs where a user's path does not lead.
const QString folderOfPrograms = "/usr/sbin/";

int freePort()
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    const int finder = socket(AF_INET, SOCK_STREAM, 0);
    bind(finder, reinterpret_cast<sockaddr *>(&address), size);
    getsockname(finder, reinterpret_cast<sockaddr *>(&address), &size);
    close(finder);
    return ntohs(address.sin_port);
}

} // namespace

Slapd::Slapd(const QByteArray &settings, const QByteArray &limits, const QString &entries)
    : m_entries(entries)
{
    QDir(m_folder.path()).mkdir("db");
    QFile file(m_folder.filePath("slapd.conf"));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("the server's configuration cannot be written");
    for (const char *schema : {"core", "cosine", "inetorgperson"})
        file.write(QByteArray("include /etc/ldap/schema/") + schema + ".schema\n");
    file.write("modulepath /usr/lib/ldap\nmoduleload back_mdb\n");
    file.write(QByteArray(settings).replace("FOLDER", m_folder.path().toUtf8()));
    file.write("\ndatabase mdb\nmaxsize 10485760\nsuffix \"dc=example,dc=org\"\n"
               "rootdn \"cn=admin,dc=example,dc=org\"\nrootpw secret\ndirectory " +
               m_folder.path().toUtf8() + "/db\n" + limits + "\n");
    file.close();
}

Slapd::~Slapd()
{
    if (m_server.state() == QProcess::NotRunning)
        return;
    freeze(false);
    stop();
}

bool Slapd::load()
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(folderOfPrograms + "slapadd", {"-q", "-f", file("slapd.conf"), "-l", m_entries});
    return process.waitForFinished(limitMs) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool Slapd::start(bool withTls)
{
    m_isLoaded = m_isLoaded || load();
    if (!m_isLoaded)
        return false;
    // Between our finding a port and its being taken by the server somebody else may have it.
    for (int attempt = 0; attempt < 5; ++attempt) {
        m_plainPort = freePort();
        QString urls = url() + ' ' + plainUrl();
        if (withTls) {
            m_tlsPort = freePort();
            urls += ' ' + tlsUrl();
        }
        m_log.clear();
        m_server.start(folderOfPrograms + "slapd", {"-f", m_folder.filePath("slapd.conf"), "-h", urls, "-d", "stats"});
        if (waitForLog("slapd starting"))
            return true;
    }
    return false;
}

void Slapd::stop()
{
    m_server.terminate();
    m_server.waitForFinished(limitMs);
}

void Slapd::freeze(bool isFrozen)
{
    ::kill(pid_t(m_server.processId()), isFrozen ? SIGSTOP : SIGCONT);
    siginfo_t state; // on a busy machine the server's threads go on for a moment
    if (isFrozen)
        waitid(P_PID, id_t(m_server.processId()), &state, WSTOPPED);
}

QString Slapd::url() const
{
    const QByteArray socket = QUrl::toPercentEncoding(m_folder.filePath("socket"));
    return "ldapi://" + QString::fromLatin1(socket);
}

bool Slapd::waitForLog(const QByteArray &text)
{
    const QDeadlineTimer limit(limitMs);
    while (!m_log.contains(text)) {
        if (limit.hasExpired() || (m_server.state() == QProcess::NotRunning && m_server.bytesAvailable() == 0))
            return false;
        m_server.waitForReadyRead(50);
        m_log += m_server.readAllStandardError();
    }
    return true;
}
