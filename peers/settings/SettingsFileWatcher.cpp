// SPDX-License-Identifier: Apache-2.0
#include "peers/settings/SettingsFileWatcher.h"

#include <QFileInfo>

#include <chrono>

namespace {
constexpr std::chrono::milliseconds quietTime{100};
}

SettingsFileWatcher::SettingsFileWatcher(const QString &path, QObject *parent)
    : QObject(parent)
    , m_path(path)
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quietTime);
    connect(&m_quiet, &QTimer::timeout, this, &SettingsFileWatcher::changed);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &SettingsFileWatcher::noteChange);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &SettingsFileWatcher::noteChange);
    watch();
}

void SettingsFileWatcher::watch()
{
    // A replaced file is another file: the watch on the old one is gone, that on the folder tells of the new one.
    const QFileInfo info(m_path);
    if (!m_watcher.directories().contains(info.absolutePath()))
        m_watcher.addPath(info.absolutePath());
    if (info.exists() && !m_watcher.files().contains(m_path))
        m_watcher.addPath(m_path);
}

void SettingsFileWatcher::noteChange()
{
    watch();
    m_quiet.start();
}

#include "moc_SettingsFileWatcher.cpp"
