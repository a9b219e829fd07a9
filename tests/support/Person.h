// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QStringList>

#include <algorithm>

/// A contact of one line, "name=Abel|officePhone=12|misc.city=Paris": the text fields by their names, "photo",
/// "melody", "puid", the type by name or number, and pairs behind "misc.". What has no "=" is the name.
inline Contact person(const QString &line)
{
    static const QMap<QString, int> types{{"Cached", ContactType::Cached},
                                          {"ManagerAssistant", ContactType::ManagerAssistant},
                                          {"Remote", ContactType::Remote}};
    Contact contact;
    for (const QString &part : line.split('|')) {
        const qsizetype sign = part.indexOf('=');
        const QString key = sign < 0 ? "name" : part.left(sign), value = part.mid(sign + 1);
        const auto field = std::find_if(Contact::texts.begin(), Contact::texts.end(),
                                        [&](const auto &text) { return key == QLatin1String(text.name); });
        if (field != Contact::texts.end())
            contact.*field->value = value;
        else if (key.startsWith("misc."))
            contact.misc.insert(key.mid(5), value);
        else if (key == "photo")
            contact.photo = value;
        else if (key == "melody")
            contact.melody = value;
        else if (key == "puid")
            contact.setPUID(value);
        else if (key == "type")
            contact.type = types.value(value, value.toInt());
        else
            qFatal("a contact has no field \"%s\"", qPrintable(key));
    }
    return contact;
}
