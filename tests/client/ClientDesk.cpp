// SPDX-License-Identifier: Apache-2.0
#include "tests/client/ClientDesk.h"

#include "platform/records/KestinBus.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

QStringList Outcome::names() const
{
    QStringList names;
    for (const QJsonValue &contact : json().array())
        names.append(contact[u"name"].toString());
    return names;
}

Outcome client(const QStringList &arguments, const QByteArray &input)
{
    Program program(u"kestin-dir"_s, arguments);
    const int code = program.run(input);
    return {code, program.output(), program.errorOutput()};
}

void ClientDesk::init()
{
    m_data = std::make_unique<QTemporaryDir>();
    qputenv("KESTIN_DATA_DIR", m_data->path().toUtf8());
    m_photos = path(u"KestinDirectory/photos/"_s);
    QVERIFY(QDir().mkpath(m_photos));
    m_bus = std::make_unique<PrivateBus>();
    const QDBusConnection connection = m_bus->connection(u"test"_s);
    m_settings = std::make_unique<Program>(u"kestin-settings"_s);
    QVERIFY(m_settings->startAndWaitForName(ModuleName::settings, connection));
    m_telephony = std::make_unique<Program>(u"kestin-telephony"_s);
    QVERIFY(m_telephony->startAndWaitForName(ModuleName::telephony, connection));
    startDirectory();
}

void ClientDesk::startDirectory()
{
    m_directory = std::make_unique<Program>(u"kestin-directory"_s);
    m_directory->setEnvironment(u"KESTIN_LOG_LEVEL"_s, u"7"_s); // what a test waits for stands in the log
    m_directory->setEnvironment(u"http_proxy"_s, m_proxy);
    QVERIFY(m_directory->startAndWaitForName(ModuleName::directory, m_bus->connection(u"test"_s)));
}

void ClientDesk::cleanup()
{
    m_directory.reset();
    m_company.reset();
    m_telephony.reset();
    m_settings.reset();
    QDBusConnection::disconnectFromBus(u"test"_s);
    m_bus.reset();
}

void ClientDesk::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}
