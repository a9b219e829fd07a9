// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/ldif/EntryMatcher.h"

#include <algorithm>

namespace {

QString folded(const QString &text, bool isNumber)
{
    QString result = text.normalized(QString::NormalizationForm_KC).toCaseFolded().simplified();
    if (isNumber)
        result.remove(QLatin1Char(' ')).remove(QLatin1Char('-'));
    return result;
}

bool compares(const QString &value, DirectoryCriterion::Operator comparison, const QString &text)
{
    switch (comparison) {
    case DirectoryCriterion::Equal:
        return value == text;
    case DirectoryCriterion::Begins:
        return value.startsWith(text);
    case DirectoryCriterion::Contains:
        return value.contains(text);
    case DirectoryCriterion::Ends:
        return value.endsWith(text);
    case DirectoryCriterion::BeginsWord:
        break;
    }
    return value.startsWith(text) || value.contains(QLatin1Char(' ') + text);
}

} // namespace

EntryMatcher::EntryMatcher(const DirectoryQuery &query, const QString &objectClass)
    : m_query(query)
    , m_objectClass(objectClass)
{
    for (DirectoryCriterion &criterion : m_query.criteria) {
        for (QString &text : criterion.texts)
            text = folded(text, criterion.isNumber);
    }
}

bool EntryMatcher::matches(const DirectoryEntry &entry) const
{
    if (!m_objectClass.isEmpty() &&
        !entry.valuesOf(QStringLiteral("objectClass")).contains(m_objectClass, Qt::CaseInsensitive))
        return false;
    const auto isFulfilled = [&entry](const DirectoryCriterion &criterion) { return holds(criterion, entry); };
    const QList<DirectoryCriterion> &criteria = m_query.criteria;
    return criteria.isEmpty() || (m_query.needsAll ? std::all_of(criteria.begin(), criteria.end(), isFulfilled)
                                                   : std::any_of(criteria.begin(), criteria.end(), isFulfilled));
}

bool EntryMatcher::holds(const DirectoryCriterion &criterion, const DirectoryEntry &entry)
{
    for (const LdapAttribute &attribute : criterion.attributes) {
        const QStringList values = attribute.valuesIn(entry);
        for (const QString &value : values) {
            const QString compared = folded(value, criterion.isNumber);
            const bool isMatch = std::any_of(criterion.texts.begin(), criterion.texts.end(), [&](const QString &text) {
                return compares(compared, criterion.comparison, text);
            });
            if (isMatch)
                return true;
        }
    }
    return false;
}
