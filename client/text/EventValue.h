// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/EventArgument.h"

/// Typed access to the arguments of an event.
namespace EventValue {

/// The value as a T, when it is one or arrived over the bus with the signature of one.
template <typename T>
bool unpack(const QVariant &value, T &result)
{
    const QMetaType type = QMetaType::fromType<T>();
    const bool fits = value.metaType() == type || canBeUnpacked(value, type);
    if (fits)
        result = qdbus_cast<T>(value);
    return fits;
}

/// The argument of this name; an empty T when there is none, or one of another type.
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
