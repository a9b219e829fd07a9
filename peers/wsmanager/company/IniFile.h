// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

/// The settings of an INI file, in their order: sections in brackets, lines "key=value", comments behind ";" or "#" at
/// the beginning of a line. A key stands once in its section. A value stands as it is, without the blanks around it;
/// one in double quotes keeps them, and has a backslash before each double quote and backslash.
struct IniFile
{
    struct Setting
    {
        QString section;
        QString key;
        QString value;
    };

    QList<Setting> settings;
    QString problem; ///< why it cannot be read; empty: it can

    static IniFile read(const QString &path);

private:
    QString take(const QString &line, QString &section);
};
