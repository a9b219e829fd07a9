// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>

#include <utility>

/// A platform setting with what a settings page needs to show it.
/// On the bus: (sssssssiiia(ss)bbs), the fields in the order in which they stand here.
struct Setting
{
    QString key;
    QString value;
    QString defaultValue;
    QString category;
    QString label;
    QString description;
    QString unit;
    qint32 minimum = 0;
    qint32 maximum = 0;
    qint32 accessLevel = 0;
    QList<std::pair<QString, QString>> choices; ///< value and its label
    bool readOnly = false;
    bool rebootRequired = false;
    QString lastWriter;

    QString getValue() const { return value; }

    bool operator==(const Setting &) const = default;
};

using ListSetting = QList<Setting>;

QDBusArgument &operator<<(QDBusArgument &argument, const Setting &setting);
const QDBusArgument &operator>>(const QDBusArgument &argument, Setting &setting);

/// Registers "Setting" and "ListSetting" with the meta-type system and the bus.
void registerDBusSetting();

Q_DECLARE_METATYPE(Setting)
