// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

#include <optional>

/// The settings of an INI file, in their order: sections in brackets, lines "key=value", comments behind ";" or "#" at
/// the beginning of a line. A key stands once in its section. A value stands as it is, without the blanks around it;
/// in double quotes it keeps them, and has a backslash before each double quote and backslash.
struct IniFile
{
    struct Setting
    {
        QString section;
        QString key;
        QString value;
    };

    QList<Setting> settings;
    std::optional<QString> problem; ///< why the file cannot be read, when it cannot

    static IniFile read(const QString &path);

private:
    std::optional<QString> take(const QString &line, QString &section);
};
