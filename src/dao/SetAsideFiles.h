// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

#include <optional>

/// The databases that failed the check, kept beside the one in use under its name, a mark and a time stamp.
class SetAsideFiles
{
public:
    explicit SetAsideFiles(const QString &filePath);

    /// Renames the file and its journals, and answers the new path. Answers nothing when not all of them can be
    /// renamed; then none is. The three newest databases are kept. Nobody may have the database open.
    std::optional<QString> add();

    bool isEmpty() const { return names().isEmpty(); }

    /// Removes all of them, with their journals.
    void clear() { removeBut(0); }

private:
    QStringList names() const;
    void removeBut(int kept);
    bool move(const QString &target) const;

    QString m_filePath;
};
