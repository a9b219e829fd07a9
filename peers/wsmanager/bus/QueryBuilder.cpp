// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/bus/QueryBuilder.h"

#include "platform/records/WebServiceCalls.h"

namespace {

DirectoryQuery impossible(const QString &problem)
{
    DirectoryQuery query;
    query.problem = problem;
    return query;
}

} // namespace

DirectoryQuery QueryBuilder::byName(const QString &name) const
{
    QList<LdapAttribute> attributes = m_map.attributesOf(QStringLiteral("firstName"));
    attributes += m_map.attributesOf(QStringLiteral("name"));
    const LdapAttribute commonName{QStringLiteral("cn"), QString()};
    if (!attributes.contains(commonName))
        attributes.append(commonName);
    DirectoryQuery query;
    const QStringList words = name.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &word : words)
        query.criteria.append({attributes, DirectoryCriterion::BeginsWord, {word}});
    return query.criteria.isEmpty() ? impossible(QStringLiteral("the name to search for is empty")) : query;
}

DirectoryQuery QueryBuilder::byCriteria(const QString &joining, const QStringList &attributes,
                                        const QStringList &operators, const QStringList &values) const
{
    if (joining != WebServiceTerm::allOf && joining != WebServiceTerm::anyOf)
        return impossible(QStringLiteral("criteria are joined with AND or OR, not with \"%1\"").arg(joining));
    if (attributes.isEmpty() || attributes.size() != operators.size() || attributes.size() != values.size())
        return impossible(QStringLiteral("there must be as many operators and values as attributes, and at least one"));
    DirectoryQuery query;
    query.needsAll = joining == WebServiceTerm::allOf;
    for (qsizetype i = 0; i < attributes.size(); ++i) {
        const qsizetype comparison = operatorNames().indexOf(operators.at(i));
        if (comparison < 0)
            return impossible(QStringLiteral("there is no operator \"%1\"").arg(operators.at(i)));
        add(query, attributes.at(i), DirectoryCriterion::Operator(comparison), values.at(i));
    }
    return query;
}

DirectoryQuery QueryBuilder::byText(const QString &text, const QStringList &attributes) const
{
    DirectoryQuery query;
    query.needsAll = false;
    const QStringList asked = attributes.isEmpty() ? m_map.fields() : attributes;
    for (const QString &attribute : asked)
        add(query, attribute, DirectoryCriterion::Contains, text);
    return query;
}

DirectoryQuery QueryBuilder::byContactId(const QString &contactId)
{
    DirectoryQuery query;
    query.dn = AttributeMap::dnOf(contactId);
    if (query.dn.isEmpty())
        query.problem = QStringLiteral("the contact id is empty");
    return query;
}

void QueryBuilder::add(DirectoryQuery &query, const QString &attribute, DirectoryCriterion::Operator comparison,
                       const QString &value) const
{
    const QStringList fields = fieldsOf(attribute);
    DirectoryCriterion criterion{{}, comparison, {value.trimmed()}, false};
    for (const QString &field : fields) {
        criterion.attributes += m_map.attributesOf(field);
        criterion.isNumber = AttributeMap::isNumber(field);
    }
    if (criterion.attributes.isEmpty())
        query.problem = QStringLiteral("there is no attribute \"%1\"").arg(attribute);
    if (value.trimmed().isEmpty())
        query.problem = QStringLiteral("the value to search for is empty");
    query.criteria.append(criterion);
}

QStringList QueryBuilder::fieldsOf(const QString &attribute) const
{
    if (attribute.compare(WebServiceTerm::anyNumber, Qt::CaseInsensitive) == 0)
        return AttributeMap::callerFields();
    return m_map.fieldsLike(attribute);
}

QStringList QueryBuilder::attributeNames() const
{
    QStringList names{WebServiceTerm::anyNumber};
    const QStringList fields = m_map.fields();
    for (const QString &field : fields)
        names.append(field.section(QLatin1Char('.'), -1));
    return names;
}

QStringList QueryBuilder::operatorNames()
{
    // In the order of DirectoryCriterion::Operator; the last one there is for names only.
    return {WebServiceTerm::equal, QStringLiteral("BEGINS"), QStringLiteral("CONTAINS"), QStringLiteral("ENDS")};
}
