// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QString>

#include <optional>

/// The INI file in which the values are kept. An absent file is an empty one. Main thread only.
///
/// The file may be edited by hand. A text with a comma, a semicolon, a double quote or blanks at its ends is written in
/// double quotes, and a backslash is doubled, as in a file that was written here. Comments do not survive a write.
class SettingsFile
{
public:
    explicit SettingsFile(const QString &path);

    struct Content
    {
        QHash<QString, QString> values; ///< what could be read
        std::optional<QString> problem; ///< why these may not be all values, when they may not
    };

    QString path() const { return m_path; }
    Content read() const;
    /// Puts the value on the disk. Answers why not, when that fails; then nothing has changed. The file is replaced in
    /// one step: whoever reads it sees all of the old file or all of the new file.
    [[nodiscard]] std::optional<QString> write(const QString &key, const QString &value);

private:
    std::optional<QString> problem() const;

    QString m_path;
};
