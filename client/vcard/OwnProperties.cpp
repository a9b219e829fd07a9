// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/OwnProperties.h"

#include <array>

namespace {

using Properties = QList<std::pair<QByteArray, QByteArray>>;

constexpr QLatin1String prefix("X-KESTIN-");
constexpr QLatin1String misc("MISC");
constexpr QLatin1String noMisc("NO-MISC");

/// The texts that the directory does not make by itself.
QList<Contact::TextField> textFields()
{
    QList<Contact::TextField> fields{{"melody", &Contact::melody}};
    for (const Contact::TextField &field : Contact::texts) {
        const QLatin1String name(field.name);
        const bool isDerived = name == QLatin1String("contactId") || name.startsWith(QLatin1String("latin")) ||
                               name.endsWith(QLatin1String("Can"));
        if (!isDerived)
            fields.append(field);
    }
    return fields;
}

struct Flag
{
    QLatin1String name;
    bool Contact::*value;
};

constexpr std::array<Flag, 2> flags{{
    {QLatin1String("ISPREVIEWED"), &Contact::isPreviewed},
    {QLatin1String("ISPRIVATE"), &Contact::isPrivate},
}};

bool isPlain(char character)
{
    return uchar(character) >= 0x20 && character != 0x7f && !QByteArrayView("%;,\\").contains(character);
}

/// Blanks at either end get lost in many programs.
QByteArray encoded(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    QByteArray result;
    for (qsizetype place = 0; place < bytes.size(); ++place) {
        const bool isEnd = place == 0 || place == bytes.size() - 1;
        const char character = bytes.at(place);
        if (isPlain(character) && !(isEnd && character == ' '))
            result += character;
        else
            result += '%' + bytes.mid(place, 1).toHex();
    }
    return result;
}

QString decoded(const QString &value)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(value.toUtf8())).remove(QChar(u'\0'));
}

QString upper(const char *name)
{
    return QString::fromLatin1(name).toUpper();
}

void append(Properties &properties, const QString &name, const QByteArray &value)
{
    properties.append({(prefix + name).toLatin1(), value});
}

void appendMisc(Properties &properties, const QMap<QString, QString> &wanted, const QMap<QString, QString> &understood)
{
    for (auto pair = understood.cbegin(); pair != understood.cend(); ++pair) {
        if (!wanted.contains(pair.key()))
            append(properties, noMisc, encoded(pair.key()));
    }
    for (auto pair = wanted.cbegin(); pair != wanted.cend(); ++pair) {
        const auto known = understood.constFind(pair.key());
        if (known == understood.cend() || *known != *pair)
            append(properties, misc, encoded(pair.key()) + ';' + encoded(*pair));
    }
}

} // namespace

Properties OwnProperties::between(const Contact &wanted, const Contact &understood)
{
    Properties properties;
    for (const Contact::TextField &field : textFields()) {
        if (wanted.*field.value != understood.*field.value)
            append(properties, upper(field.name), encoded(wanted.*field.value));
    }
    for (const Flag &flag : flags) {
        if (wanted.*flag.value != understood.*flag.value)
            append(properties, flag.name, wanted.*flag.value ? "1" : "0");
    }
    appendMisc(properties, wanted.misc, understood.misc);
    return properties;
}

bool OwnProperties::isOwn(const QString &name)
{
    return name.startsWith(prefix);
}

void OwnProperties::apply(const VCardProperty &property, Contact &contact)
{
    const QString name = property.name.mid(prefix.size());
    const QString value = decoded(property.values.value(0));
    if (name == misc)
        contact.misc.insert(value, decoded(property.values.value(1)));
    else if (name == noMisc)
        contact.misc.remove(value);
    for (const Flag &flag : flags) {
        if (name == flag.name)
            contact.*flag.value = value == QLatin1String("1");
    }
    for (const Contact::TextField &field : textFields()) {
        if (name == upper(field.name))
            contact.*field.value = value;
    }
}
