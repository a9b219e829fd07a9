// SPDX-License-Identifier: Apache-2.0
#include "client/text/RecordJson.h"

#include <QJsonArray>

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
