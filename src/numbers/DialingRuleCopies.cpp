// SPDX-License-Identifier: Apache-2.0
#include "src/numbers/DialingRuleCopies.h"

#include "platform/framework/PlatformCalls.h"

#include <QStringList>

namespace {

const QStringList &ruleKeys()
{
    static const QStringList keys{
        QStringLiteral("DialingRuleCountryCode"),
        QStringLiteral("DialingRuleAreaCode"),
        QStringLiteral("DialingRuleExternalPrefix"),
        QStringLiteral("DialingRuleMinNumberLength"),
        QStringLiteral("DialingRuleExternalPrefixExceptions"),
    };
    return keys;
}

QString copyOf(const QString &key)
{
    return key + QLatin1String("Save");
}

} // namespace

bool DialingRuleCopies::dialingRulesChanged()
{
    PlatformCalls calls(m_caller);
    QStringList rules;
    for (const QString &key : ruleKeys())
        rules.append(calls.getSetting(key));
    QStringList copies;
    for (const QString &key : ruleKeys())
        copies.append(calls.getSetting(copyOf(key)));
    if (rules == copies)
        return false;
    if (!m_numbers.markStale())
        return true;
    for (qsizetype i = 0; i < rules.size(); ++i)
        calls.setSettingConfirmed(copyOf(ruleKeys().at(i)), rules.at(i)); // logged there when it fails
    return true;
}
