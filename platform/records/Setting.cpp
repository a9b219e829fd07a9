// SPDX-License-Identifier: Apache-2.0
#include "platform/records/Setting.h"

#include <QDBusMetaType>

namespace {

void writeChoices(QDBusArgument &argument, const QList<std::pair<QString, QString>> &choices)
{
    argument.beginArray(QMetaType::fromType<std::pair<QString, QString>>());
    for (const auto &[value, label] : choices) {
        argument.beginStructure();
        argument << value << label;
        argument.endStructure();
    }
    argument.endArray();
}

void readChoices(const QDBusArgument &argument, QList<std::pair<QString, QString>> &choices)
{
    choices.clear();
    argument.beginArray();
    while (!argument.atEnd()) {
        std::pair<QString, QString> choice;
        argument.beginStructure();
        argument >> choice.first >> choice.second;
        argument.endStructure();
        choices.append(choice);
    }
    argument.endArray();
}

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const Setting &setting)
{
    argument.beginStructure();
    argument << setting.key << setting.value << setting.defaultValue << setting.category << setting.label
             << setting.description << setting.unit << setting.minimum << setting.maximum << setting.accessLevel;
    writeChoices(argument, setting.choices);
    argument << setting.readOnly << setting.rebootRequired << setting.lastWriter;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Setting &setting)
{
    argument.beginStructure();
    argument >> setting.key >> setting.value >> setting.defaultValue >> setting.category >> setting.label >>
        setting.description >> setting.unit >> setting.minimum >> setting.maximum >> setting.accessLevel;
    readChoices(argument, setting.choices);
    argument >> setting.readOnly >> setting.rebootRequired >> setting.lastWriter;
    argument.endStructure();
    return argument;
}

void registerDBusSetting()
{
    // The bus library knows how to carry a pair; it only has to be told of this one.
    qDBusRegisterMetaType<std::pair<QString, QString>>();
    qDBusRegisterMetaType<Setting>();
    qDBusRegisterMetaType<ListSetting>();
    qRegisterMetaType<ListSetting>("ListSetting");
}
