// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/EventArgument.h"

#include <QJsonObject>
#include <QStringList>

/// Typed access to the arguments of an event.
namespace EventValue {

/// The value as a T, when it is a T or came over the bus with the signature of a T.
template <typename T>
bool unpack(const QVariant &value, T &result)
{
    const QMetaType type = QMetaType::fromType<T>();
    const bool fits = value.metaType() == type || canBeUnpacked(value, type);
    if (fits)
        result = qdbus_cast<T>(value);
    return fits;
}

/// The argument of this name. An empty T when no argument of this name is a T.
template <typename T>
T of(const ListEventArgument &arguments, QLatin1String name)
{
    T result{};
    for (const EventArgument &argument : arguments) {
        if (argument.name == name && unpack(argument.value, result))
            break;
    }
    return result;
}

} // namespace EventValue

/// Platform events as people and scripts read them. The arguments may have come over the bus. The directory's records
/// are recognised by their signature. A value of another kind is named by its signature only.
namespace EventText {

/// "name=value" of every argument, not escaped. Of a list of contacts: the first few and how many more there are. When
/// only photos have changed, "photo=…" of each contact too.
QStringList arguments(const ListEventArgument &arguments);

/// A key for each argument, records as RecordJson writes them.
QJsonObject json(const ListEventArgument &arguments);

} // namespace EventText
