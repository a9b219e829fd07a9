// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/settings/SettingsCatalogue.h"
#include "peers/settings/SettingsFile.h"
#include "platform/records/UpdateReport.h"

#include <QHash>
#include <QObject>

#include <optional>

/// The settings with their values: what is in the file, the catalogue's default where that holds nothing. A value in
/// the file that the catalogue refuses counts as absent. Main thread only.
class SettingsStore : public QObject
{
    Q_OBJECT

public:
    /// Codes of an UpdateReport.
    enum Code { Written = 0, BadKey = 1, BadValue = 2, TooLong = 3, NotWritable = 4 };
    static constexpr qsizetype keyLimit = 100;         ///< UTF-16 units
    static constexpr qsizetype valueLimit = 250'000;   ///< UTF-16 units
    static constexpr qsizetype totalLimit = 1'000'000; ///< UTF-16 units of all values, which travel in one call

    explicit SettingsStore(const QString &path);

    QString path() const { return m_file.path(); }
    const SettingsCatalogue &catalogue() const { return m_catalogue; }

    /// Reads the file; `changed` is emitted for what differs from before, not at the first time.
    void load();

    /// None for a key that is neither in the catalogue nor stored.
    std::optional<QString> value(const QString &key) const;
    std::optional<Setting> setting(const QString &key) const;
    /// The catalogue's settings in its order, then the others by key.
    ListSetting settings() const;
    UpdateReport set(const QString &key, const QString &value);

Q_SIGNALS:
    /// The value that the setting answers with has changed.
    void changed(const Setting &setting);

private:
    void reportProblems(const SettingsFile::Content &content);
    void replaceValues(const QHash<QString, QString> &values);
    std::optional<UpdateReport> refusal(const QString &key, const QString &value) const;
    UpdateReport write(const QString &key, const QString &value);
    qsizetype totalWith(const QString &key, const QString &value) const;

    SettingsCatalogue m_catalogue;
    SettingsFile m_file;
    std::optional<QString> m_problem; ///< of the file, as read last
    bool m_isLoaded = false;
    QHash<QString, QString> m_values;
    QHash<QString, QString> m_writers;
};
