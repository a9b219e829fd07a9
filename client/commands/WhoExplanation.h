// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"
#include "client/text/NumberReading.h"
#include "platform/records/Contact.h"

#include <QJsonObject>

#include <optional>

/// Who has a number, and what could not be asked about it.
struct WhoAnswer
{
    QString number;    ///< as it was given
    QString canonical; ///< as it was looked for
    ListContact contacts;
    std::optional<CommandFailure> telephonyFault;
    std::optional<CommandFailure> companyFault;
    bool isOfPhoneOnly = true;

    /// The contacts, each with "company" and "matchedFields".
    QList<QJsonObject> toJson() const;
};

/// How a number was read and what it met.
class WhoExplanation
{
public:
    /// Asks telephony, the settings and, when nobody on the phone has the number, for all contacts. What does not
    /// answer is told in its place.
    WhoExplanation(const WhoAnswer &answer, const BusSession &bus);

    void print(const CommandContext &context) const;

private:
    struct NearMiss
    {
        Contact contact;
        QString number; ///< "mobile 06 12 34 56 78"
        QString reason;
    };

    void readRules(const BusSession &bus);
    void findNearMisses(const BusSession &bus);
    QString how() const;
    QList<std::pair<QString, QString>> lines() const;

    const WhoAnswer &m_answer;
    QString m_dialable;
    std::optional<DialingRuleTexts> m_rules;
    QString m_rulesFault;
    QList<NearMiss> m_nearMisses;
};
