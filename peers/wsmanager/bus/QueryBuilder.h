// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/AttributeMap.h"
#include "peers/wsmanager/company/DirectoryQuery.h"

/// Makes queries of what a caller asks in terms of names, numbers and fields of a contact. A query that cannot be asked
/// comes with its problem.
class QueryBuilder
{
public:
    explicit QueryBuilder(const AttributeMap &map)
        : m_map(map)
    {
    }

    /// Each word of the name begins a word of the given, family or common name, in any order.
    DirectoryQuery byName(const QString &name) const;
    /// `joining` is "AND" or "OR"; the three lists have the same length. See attributeNames() and operatorNames().
    DirectoryQuery byCriteria(const QString &joining, const QStringList &attributes, const QStringList &operators,
                              const QStringList &values) const;
    /// Any of the attributes (of all that there are, when none are given) contains the text.
    DirectoryQuery byText(const QString &text, const QStringList &attributes) const;
    static DirectoryQuery byContactId(const QString &contactId);

    /// The attributes that can be asked for: "TELEPHONENUMBER" for any number of a caller, and the contact's fields.
    QStringList attributeNames() const;
    static QStringList operatorNames();
    /// The contact's fields that are looked into for such an attribute; none when there is no such attribute.
    QStringList fieldsOf(const QString &attribute) const;

private:
    void add(DirectoryQuery &query, const QString &attribute, DirectoryCriterion::Operator comparison,
             const QString &value) const;

    const AttributeMap &m_map;
};
