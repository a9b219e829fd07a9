// SPDX-License-Identifier: Apache-2.0
#include "client/text/EventText.h"

#include "client/text/ContactText.h"
#include "client/text/RecordJson.h"
#include "platform/records/ImpExpStatus.h"

#include <QDBusMetaType>
#include <QJsonArray>

namespace {

constexpr qsizetype shownOfList = 3;

/// The value as a T, when it is one or arrived over the bus with the signature of one.
template <typename T>
bool unpack(const QVariant &value, T &result)
{
    const QMetaType type = QMetaType::fromType<T>();
    const auto argument = value.value<QDBusArgument>();
    const bool fits = value.metaType() == QMetaType::fromType<QDBusArgument>()
                          ? argument.currentSignature() == QLatin1String(QDBusMetaType::typeToSignature(type))
                          : value.metaType() == type;
    if (fits)
        result = qdbus_cast<T>(value);
    return fits;
}

QString shortText(const ContactSummary &contact)
{
    return contact.contactId + QLatin1Char(' ') + ContactText::displayName(contact);
}

QString shortText(const QString &text)
{
    return text;
}

template <typename T>
QString shortList(const QList<T> &list)
{
    QStringList shown;
    for (const T &element : list.first(std::min(list.size(), shownOfList)))
        shown.append(shortText(element));
    if (list.size() > shownOfList)
        shown.append(QStringLiteral("and %1 more").arg(list.size() - shownOfList));
    return QLatin1Char('[') + shown.join(QLatin1String(", ")) + QLatin1Char(']');
}

template <typename T>
QJsonArray jsonList(const QList<T> &list)
{
    QJsonArray array;
    for (const T &element : list)
        array.append(RecordJson::of(element));
    return array;
}

QString signatureOf(const QVariant &value)
{
    return QLatin1Char('<') + value.value<QDBusArgument>().currentSignature() + QLatin1Char('>');
}

/// Both forms of a value, made by one look at its type.
struct Forms
{
    QString text;
    QJsonValue json;
};

Forms formsOf(const QVariant &value)
{
    Contact contact;
    ListContact contacts;
    ListContactSummary summaries;
    ImpExpStatus status;
    if (unpack(value, contact))
        return {shortText(contact), RecordJson::of(contact)};
    if (unpack(value, contacts))
        return {shortList(contacts), jsonList(contacts)};
    if (unpack(value, summaries))
        return {shortList(summaries), jsonList(summaries)};
    if (unpack(value, status))
        return {status.toString(), status.toString()};
    if (value.metaType() == QMetaType::fromType<QStringList>())
        return {shortList(value.toStringList()), QJsonArray::fromStringList(value.toStringList())};
    if (value.metaType() == QMetaType::fromType<QDBusArgument>())
        return {signatureOf(value), signatureOf(value)};
    return {value.toString(), QJsonValue::fromVariant(value)};
}

} // namespace

QStringList EventText::arguments(const ListEventArgument &arguments)
{
    QStringList texts;
    for (const EventArgument &argument : arguments)
        texts.append(argument.name + QLatin1Char('=') + formsOf(argument.value).text);
    return texts;
}

QJsonObject EventText::json(const ListEventArgument &arguments)
{
    QJsonObject object;
    for (const EventArgument &argument : arguments)
        object.insert(argument.name, formsOf(argument.value).json);
    return object;
}
