// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

/// Tells when a file may have changed, whether it was written in place, replaced, created or removed. An editor that
/// writes in several steps is told of once, when it has been quiet for a moment. Main thread only.
class SettingsFileWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SettingsFileWatcher(const QString &path, QObject *parent = nullptr);

Q_SIGNALS:
    void changed();

private:
    void watch();
    void noteChange();

    QString m_path;
    QFileSystemWatcher m_watcher;
    QTimer m_quiet;
};
