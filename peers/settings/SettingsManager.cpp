// SPDX-License-Identifier: Apache-2.0
#include "peers/settings/SettingsManager.h"

#include "peers/settings/SettingsFileWatcher.h"
#include "peers/settings/ValueText.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/KestinBus.h"

#include <QDir>
#include <QFileInfo>

SettingsManager::SettingsManager(const QString &path)
    : KestinModule(ModuleName::settings)
    , m_store(path)
{
    connect(&m_store, &SettingsStore::changed, this, &SettingsManager::tellOwner);
}

bool SettingsManager::check()
{
    return QFileInfo(QFileInfo(m_store.path()).absolutePath()).isDir();
}

bool SettingsManager::deploy()
{
    const QString folder = QFileInfo(m_store.path()).absolutePath();
    if (QDir().mkpath(folder))
        return true;
    KestinLogger::error("The folder %1 cannot be made", folder);
    return false;
}

bool SettingsManager::init()
{
    registerDBusSetting();
    registerDBusUpdateReport();
    m_store.load();
    auto *watcher = new SettingsFileWatcher(m_store.path(), this);
    connect(watcher, &SettingsFileWatcher::changed, &m_store, &SettingsStore::load);
    return true;
}

QString SettingsManager::getSettingValue(const QString &key)
{
    const std::optional<QString> value = m_store.value(key);
    if (!value)
        answerUnknown(key);
    return value.value_or(QString());
}

Setting SettingsManager::getSetting(const QString &key)
{
    const std::optional<Setting> setting = m_store.setting(key);
    if (!setting)
        answerUnknown(key);
    return setting.value_or(Setting());
}

void SettingsManager::tellOwner(const Setting &setting)
{
    KestinLogger::info("%1 changed to %2", setting.key, ValueText::shown(setting.value));
    const KnownSetting *known = m_store.catalogue().find(setting.key);
    if (!known || known->owner.isEmpty())
        return;
    // An owner that is not there reads the value when it starts: the answer is of no interest.
    send(known->owner, known->changeMethod, {QVariant::fromValue(setting)});
}

void SettingsManager::answerUnknown(const QString &key)
{
    answerWithError(KestinBus::exceptionError, QStringLiteral("there is no setting \"%1\"").arg(key));
}

#include "moc_SettingsManager.cpp"
