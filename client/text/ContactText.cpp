// SPDX-License-Identifier: Apache-2.0
#include "client/text/ContactText.h"

#include <QJsonArray>

#include <array>

namespace {

struct TypeName
{
    qint32 type;
    QLatin1String name;
};

constexpr std::array<TypeName, 4> namedTypes{{
    {ContactType::Local, QLatin1String("local")},
    {ContactType::Cached, QLatin1String("cached")},
    {ContactType::DeviceManagement, QLatin1String("dm")},
    {ContactType::ManagerAssistant, QLatin1String("manager")},
}};

} // namespace

QString ContactText::typeName(qint32 type)
{
    for (const TypeName &named : namedTypes) {
        if (named.type == type)
            return named.name;
    }
    return type == ContactType::Remote ? QStringLiteral("company") : QString::number(type);
}

std::optional<qint32> ContactText::typeOf(const QString &word)
{
    for (const TypeName &named : namedTypes) {
        if (named.name == word)
            return named.type;
    }
    bool isNumber = false;
    const qint32 number = word.toInt(&isNumber);
    return isNumber && number >= 0 ? std::optional(number) : std::nullopt;
}

QStringList ContactText::typeNames()
{
    QStringList names;
    for (const TypeName &named : namedTypes)
        names.append(named.name);
    return names;
}

QList<std::pair<QString, QString>> ContactText::setFields(const Contact &contact)
{
    QList<std::pair<QString, QString>> fields;
    const auto add = [&fields](const QString &field, const QString &value) {
        if (!value.isEmpty())
            fields.append({field, value});
    };
    for (const Contact::TextField &field : Contact::texts)
        add(QLatin1String(field.name), contact.*field.value);
    for (auto pair = contact.misc.cbegin(); pair != contact.misc.cend(); ++pair)
        fields.append({QLatin1String("misc.") + pair.key(), pair.value()});
    const QString yes = QStringLiteral("yes");
    add(QStringLiteral("isPreviewed"), contact.isPreviewed ? yes : QString());
    add(QStringLiteral("isPrivate"), contact.isPrivate ? yes : QString());
    add(QStringLiteral("type"), typeName(contact.type));
    add(QStringLiteral("photo"), contact.photo);
    add(QStringLiteral("melody"), contact.melody);
    add(QStringLiteral("puid"), contact.getPUID());
    add(QStringLiteral("lastModificationDate"), contact.getLastModificationDate().toString(Qt::ISODate));
    return fields;
}

QJsonObject RecordJson::of(const Contact &contact)
{
    QJsonObject object;
    for (const Contact::TextField &field : Contact::texts)
        object.insert(QLatin1String(field.name), contact.*field.value);
    QJsonObject misc;
    for (auto pair = contact.misc.cbegin(); pair != contact.misc.cend(); ++pair)
        misc.insert(pair.key(), pair.value());
    object.insert(QLatin1String("misc"), misc);
    object.insert(QLatin1String("isPreviewed"), contact.isPreviewed);
    object.insert(QLatin1String("isPrivate"), contact.isPrivate);
    object.insert(QLatin1String("type"), contact.type);
    object.insert(QLatin1String("photo"), contact.photo);
    object.insert(QLatin1String("melody"), contact.melody);
    object.insert(QLatin1String("puid"), contact.getPUID());
    object.insert(QLatin1String("lastModificationDate"), contact.getLastModificationDate().toString(Qt::ISODate));
    return object;
}

QJsonObject RecordJson::of(const ContactSummary &summary)
{
    return {{QLatin1String("contactId"), summary.contactId}, {QLatin1String("firstName"), summary.firstName},
            {QLatin1String("name"), summary.name},           {QLatin1String("officePhone"), summary.officePhone},
            {QLatin1String("email"), summary.email},         {QLatin1String("type"), summary.type}};
}

QJsonObject RecordJson::of(const Setting &setting)
{
    QJsonArray choices;
    for (const auto &[value, label] : setting.choices)
        choices.append(QJsonObject{{QLatin1String("value"), value}, {QLatin1String("label"), label}});
    return {{QLatin1String("key"), setting.key},
            {QLatin1String("value"), setting.value},
            {QLatin1String("defaultValue"), setting.defaultValue},
            {QLatin1String("category"), setting.category},
            {QLatin1String("label"), setting.label},
            {QLatin1String("description"), setting.description},
            {QLatin1String("unit"), setting.unit},
            {QLatin1String("minimum"), setting.minimum},
            {QLatin1String("maximum"), setting.maximum},
            {QLatin1String("accessLevel"), setting.accessLevel},
            {QLatin1String("choices"), choices},
            {QLatin1String("readOnly"), setting.readOnly},
            {QLatin1String("rebootRequired"), setting.rebootRequired},
            {QLatin1String("lastWriter"), setting.lastWriter}};
}
