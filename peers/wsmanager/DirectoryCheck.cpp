// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/DirectoryCheck.h"

#include "peers/wsmanager/bus/WSManager.h"
#include "peers/wsmanager/ldap/LdapConnection.h"
#include "platform/framework/KestinLogger.h"

#include <QEventLoop>

#include <chrono>

namespace {

QString attributesOf(const AttributeMap &map, const QString &field)
{
    QStringList names;
    const QList<LdapAttribute> attributes = map.attributesOf(field);
    for (const LdapAttribute &attribute : attributes)
        names.append(attribute.label.isEmpty() ? attribute.name : attribute.name + QLatin1Char('#') + attribute.label);
    return names.join(QLatin1Char(','));
}

} // namespace

DirectoryCheck::DirectoryCheck(const DirectoryConfig &config)
    : m_config(config)
    , m_out(stdout)
{
}

int DirectoryCheck::run()
{
    const std::optional<QString> problem = findPeople();
    if (!problem) {
        tellPeople();
        return EXIT_SUCCESS;
    }
    m_out.flush();
    QTextStream(stderr) << "kestin-wsmanager: " << KestinLogger::shown(*problem) << Qt::endl;
    return EXIT_FAILURE;
}

/// Why nobody is found, when nobody is.
std::optional<QString> DirectoryCheck::findPeople()
{
    const std::unique_ptr<DirectorySource> source = WSManager::sourceOf(m_config);
    try {
        if (m_config.ldif.isEmpty())
            reachServer();
        else if (!source->open()) // it says why
            return QStringLiteral("the file cannot be used");
    } catch (const LdapFailure &failure) {
        return QStringLiteral("the directory server %1 cannot be used: %2").arg(m_config.server.url, failure.text());
    }
    search(*source);
    if (m_status != PacketStatus::Finished)
        return QStringLiteral("looking for people has failed: a line above says why, or there was no answer in %1 s")
            .arg(m_config.timeoutSeconds);
    return m_people > 0 ? std::nullopt : std::optional(nobodyText());
}

void DirectoryCheck::search(DirectorySource &source)
{
    RunningSearch running({std::chrono::seconds(m_config.timeoutSeconds), {}});
    QEventLoop loop;
    connect(&running, &RunningSearch::answered, this, [&](const DirectoryEntries &entries, PacketStatus status) {
        take(entries);
        m_status = status;
        status == PacketStatus::More ? running.ask() : loop.quit();
    });
    running.begin(source.search(DirectoryQuery()));
    running.ask();
    loop.exec();
}

QString DirectoryCheck::nobodyText() const
{
    QString text =
        QStringLiteral("nobody is found below \"%1\": objectClass %2").arg(m_config.base, m_config.objectClass);
    if (!m_config.filter.isEmpty())
        text += QStringLiteral(", filter %1").arg(m_config.filter);
    if (m_config.ldif.isEmpty())
        text += QStringLiteral("; or the server does not show them to %1").arg(boundName());
    return text;
}

QString DirectoryCheck::boundName() const
{
    const QString name = m_config.server.bindName;
    return name.isEmpty() ? QStringLiteral("an anonymous caller") : name;
}

void DirectoryCheck::reachServer()
{
    const LdapServer &server = m_config.server;
    if (const auto problem = server.usesTls() ? LdapConnection::setUpTls(server) : std::nullopt)
        throw LdapFailure(*problem);
    const Wakeup wakeup;
    LdapConnection connection(server, wakeup);
    connection.open();
    const QString security = connection.security();
    tell(QStringLiteral("Server"), server.url);
    tell(QStringLiteral("Secured"), !security.isEmpty()    ? security
                                    : server.showsSecret() ? QStringLiteral("no; the password goes in the clear")
                                                           : QStringLiteral("no"));
    tell(QStringLiteral("Bound as"), boundName());
}

void DirectoryCheck::take(const DirectoryEntries &entries)
{
    m_people += int(entries.size());
    const QStringList fields = m_config.attributes.fields();
    for (const DirectoryEntry &entry : entries) {
        const Contact contact = m_config.attributes.contactOf(entry);
        int count = 0;
        for (const QString &field : fields) {
            const bool isFilled = !AttributeMap::valueOf(contact, field).isEmpty();
            m_filled[field] += isFilled;
            count += isFilled;
        }
        if (count > m_exampleFields) {
            m_exampleFields = count;
            m_example = entry;
        }
    }
}

void DirectoryCheck::tellPeople()
{
    const bool isAll = m_people < m_config.maxResults;
    tell(QStringLiteral("People"),
         QString::number(m_people) + QLatin1String(isAll ? "" : ", as many as maxResults allows"));
    tell(QStringLiteral("Somebody"), m_example.dn);
    const Contact contact = m_config.attributes.contactOf(m_example);
    m_out << "\nField               People  Attributes                Somebody's\n";
    for (auto field = m_filled.cbegin(); field != m_filled.cend(); ++field) {
        const QString value = AttributeMap::valueOf(contact, field.key());
        m_out << QStringLiteral("%1 %2  %3 %4")
                     .arg(field.key(), -18)
                     .arg(field.value(), 7)
                     .arg(attributesOf(m_config.attributes, field.key()), -25)
                     .arg(KestinLogger::shown(value))
                     .trimmed()
              << '\n';
    }
    m_out.flush();
}

void DirectoryCheck::tell(const QString &title, const QString &text)
{
    m_out << QStringLiteral("%1 %2\n").arg(title, -9).arg(KestinLogger::shown(text));
}

#include "moc_DirectoryCheck.cpp"
