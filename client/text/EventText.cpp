// SPDX-License-Identifier: Apache-2.0
#include "client/text/EventText.h"

#include "client/text/ContactText.h"
#include "platform/records/ImpExpStatus.h"
#include "platform/records/PlatformEvents.h"

#include <QJsonArray>

namespace {

constexpr qsizetype shownOfList = 3;

QString shortText(const ContactSummary &contact)
{
    if (contact == ContactSummary())
        return QStringLiteral("nobody");
    return contact.contactId + QLatin1Char(' ') + contact.displayName();
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
    if (EventValue::unpack(value, contact))
        return {shortText(contact), RecordJson::of(contact)};
    if (EventValue::unpack(value, contacts))
        return {shortList(contacts), jsonList(contacts)};
    if (EventValue::unpack(value, summaries))
        return {shortList(summaries), jsonList(summaries)};
    if (EventValue::unpack(value, status))
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
    // What has changed is not seen otherwise.
    if (EventValue::of<bool>(arguments, ArgumentName::onlyPhotoHasChanged)) {
        for (const Contact &contact : EventValue::of<ListContact>(arguments, ArgumentName::contacts))
            texts.append(QLatin1String("photo=") + contact.photo);
    }
    return texts;
}

QJsonObject EventText::json(const ListEventArgument &arguments)
{
    QJsonObject object;
    for (const EventArgument &argument : arguments)
        object.insert(argument.name, formsOf(argument.value).json);
    return object;
}
