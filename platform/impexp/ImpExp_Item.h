// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

#include <utility>

/// An entry of a synchronisation file: its attributes, and its elements when it carries more than its ids.
class ImpExp_Item
{
public:
    using Texts = QList<std::pair<QString, QString>>; ///< names and values, in the order of the file

    explicit ImpExp_Item(const QString &name);

    QString name() const { return m_name; }

    /// Empty when the item has no value of this name.
    QString getAttribute(const QString &name) const;
    QString getElement(const QString &name) const;
    bool hasAttribute(const QString &name) const;
    bool hasElement(const QString &name) const;
    /// False for a mapping item. True also for a whole contact that was read without its elements.
    bool hasElements() const { return m_hasElements; }

    /// Replaces a value of the same name.
    void setAttribute(const QString &name, const QString &value);
    void setElement(const QString &name, const QString &text);
    /// Forgets the values, not that there were any.
    void dropElements() { m_elements.clear(); }

    const Texts &attributes() const { return m_attributes; }
    const Texts &elements() const { return m_elements; }

private:
    QString m_name;
    Texts m_attributes;
    Texts m_elements;
    bool m_hasElements = false;
};
