// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/ImpExp_Item.h"

#include <algorithm>

namespace {

auto find(auto &texts, const QString &name)
{
    return std::find_if(texts.begin(), texts.end(), [&](const auto &text) { return text.first == name; });
}

QString valueOf(const ImpExp_Item::Texts &texts, const QString &name)
{
    const auto found = find(texts, name);
    return found == texts.end() ? QString() : found->second;
}

void set(ImpExp_Item::Texts &texts, const QString &name, const QString &value)
{
    const auto found = find(texts, name);
    if (found == texts.end())
        texts.append({name, value});
    else
        found->second = value;
}

} // namespace

ImpExp_Item::ImpExp_Item(const QString &name)
    : m_name(name)
{
}

QString ImpExp_Item::getAttribute(const QString &name) const
{
    return valueOf(m_attributes, name);
}

QString ImpExp_Item::getElement(const QString &name) const
{
    return valueOf(m_elements, name);
}

bool ImpExp_Item::hasAttribute(const QString &name) const
{
    return find(m_attributes, name) != m_attributes.end();
}

bool ImpExp_Item::hasElement(const QString &name) const
{
    return find(m_elements, name) != m_elements.end();
}

void ImpExp_Item::setAttribute(const QString &name, const QString &value)
{
    set(m_attributes, name, value);
}

void ImpExp_Item::setElement(const QString &name, const QString &text)
{
    m_hasElements = true;
    set(m_elements, name, text);
}
