// SPDX-License-Identifier: Apache-2.0
#include "bench/Stand.h"

#include "bench/BenchError.h"
#include "platform/records/KestinBus.h"
#include "platform/records/UpdateReport.h"

#include <QCoreApplication>
#include <QProcess>
#include <QUuid>

Stand::Stand(const QString &workDirectory, int capacity)
    : m_folder(workDirectory + QLatin1String("/kestin-bench-XXXXXX"))
    , m_connection(m_bus.connection(QUuid::createUuid().toString()))
    , m_client(m_connection)
    , m_settings(QStringLiteral("kestin-settings"), ModuleName::settings, m_folder.path(), m_connection)
    , m_telephony(QStringLiteral("kestin-telephony"), ModuleName::telephony, m_folder.path(), m_connection)
    , m_directory(QStringLiteral("kestin-directory"), ModuleName::directory, m_folder.path(), m_connection)
{
    if (!m_folder.isValid())
        throw BenchError(QStringLiteral("no folder can be made in %1: %2").arg(workDirectory, m_folder.errorString()));
    m_settings.start();
    m_telephony.start();
    set(QStringLiteral("DirMaxContact"), QString::number(capacity));
    set(QStringLiteral("DialingRuleCountryCode"), QStringLiteral("33"));
}

QString Stand::databasePath() const
{
    return m_folder.filePath(QStringLiteral("KestinApplication/KestinDirectory/kestindirectory.data"));
}

int Stand::runClient(const QStringList &arguments) const
{
    constexpr int limitMs = 600000;
    QProcess client;
    client.setStandardOutputFile(QProcess::nullDevice());
    client.setStandardErrorFile(folder() + QLatin1String("/kestin-dir.log"));
    client.start(QCoreApplication::applicationDirPath() + QLatin1String("/kestin-dir"), arguments);
    return client.waitForFinished(limitMs) && client.exitStatus() == QProcess::NormalExit ? client.exitCode() : -1;
}

void Stand::set(const QString &key, const QString &value)
{
    const auto report =
        m_client.call(ModuleName::settings, QStringLiteral("setSettingValue"), {key, value}).value<UpdateReport>();
    if (report.code != 0)
        throw BenchError(QStringLiteral("%1 cannot be set to %2: %3").arg(key, value, report.message));
}
