// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/company/LdapFilter.h"

#include "peers/wsmanager/company/LdapMemory.h"

namespace {

QByteArray group(char joining, const QList<QByteArray> &parts)
{
    if (parts.size() == 1)
        return parts.first();
    return '(' + (joining + parts.join()) + ')';
}

QByteArray item(const LdapAttribute &attribute, const QByteArray &value)
{
    return '(' + attribute.name.toUtf8() + '=' + value + ')';
}

QList<QByteArray> items(const LdapAttribute &attribute, DirectoryCriterion::Operator comparison, const QString &text)
{
    const QByteArray value = LdapFilter::escaped(text);
    const QByteArray label = attribute.label.isEmpty() ? QByteArray() : ' ' + LdapFilter::escaped(attribute.label);
    switch (comparison) {
    case DirectoryCriterion::Equal:
        return {item(attribute, value + label)};
    case DirectoryCriterion::Begins:
        return {item(attribute, value + '*' + label)};
    case DirectoryCriterion::Contains:
        return {item(attribute, '*' + value + '*' + label)};
    case DirectoryCriterion::Ends:
        return {item(attribute, '*' + value + label)};
    case DirectoryCriterion::BeginsWord:
        break;
    }
    return {item(attribute, value + '*'), item(attribute, "* " + value + '*')};
}

QByteArray criterionText(const DirectoryCriterion &criterion)
{
    QList<QByteArray> parts;
    for (const LdapAttribute &attribute : criterion.attributes) {
        for (const QString &text : criterion.texts)
            parts += items(attribute, criterion.comparison, text);
    }
    return group('|', parts);
}

} // namespace

QByteArray LdapFilter::of(const DirectoryQuery &query, const QString &objectClass, const QString &furtherFilter)
{
    QList<QByteArray> parts;
    if (!objectClass.isEmpty())
        parts.append("(objectClass=" + escaped(objectClass) + ')');
    if (!furtherFilter.isEmpty())
        parts.append(furtherFilter.toUtf8());
    QList<QByteArray> criteria;
    for (const DirectoryCriterion &criterion : query.criteria)
        criteria.append(criterionText(criterion));
    if (!criteria.isEmpty())
        parts.append(group(query.needsAll ? '&' : '|', criteria));
    return parts.isEmpty() ? QByteArray("(objectClass=*)") : group('&', parts);
}

bool LdapFilter::isWellFormed(const QString &filter)
{
    if (!filter.startsWith(QLatin1Char('(')) || !filter.endsWith(QLatin1Char(')')))
        return false;
    // The library parses a filter when it is sent, and before it connects; this address leads nowhere.
    LDAP *ldap = nullptr;
    if (ldap_initialize(&ldap, "ldapi://%2Fdev%2Fnull%2Fnowhere") != LDAP_SUCCESS)
        return false;
    const LdapHandle owned(ldap);
    int operation = 0;
    const int rc = ldap_search_ext(ldap, "", LDAP_SCOPE_BASE, filter.toUtf8().constData(), nullptr, 0, nullptr, nullptr,
                                   nullptr, 0, &operation);
    return rc != LDAP_FILTER_ERROR;
}

QByteArray LdapFilter::escaped(const QString &value)
{
    QByteArray bytes = value.toUtf8();
    berval in{ber_len_t(bytes.size()), bytes.data()};
    berval out{0, nullptr};
    if (bytes.isEmpty() || ldap_bv2escaped_filter_value(&in, &out) != 0)
        return QByteArray();
    // Nothing to escape: the library hands back what it was given.
    const LdapText owned(out.bv_val == in.bv_val ? nullptr : out.bv_val);
    return QByteArray(out.bv_val, qsizetype(out.bv_len));
}
