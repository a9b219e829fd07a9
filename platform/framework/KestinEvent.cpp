// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/KestinEvent.h"

#include <algorithm>

KestinEvent::KestinEvent(const QString &name, const ListEventArgument &arguments)
    : m_name(name)
    , m_arguments(arguments)
{
}

void KestinEvent::addArgument(const QVariant &value, const QString &name, bool flag)
{
    m_arguments.append({name, value, flag});
}

QVariant KestinEvent::value(const QString &name) const
{
    const auto found = std::find_if(m_arguments.cbegin(), m_arguments.cend(),
                                    [&name](const EventArgument &argument) { return argument.name == name; });
    return found == m_arguments.cend() ? QVariant() : found->value;
}
