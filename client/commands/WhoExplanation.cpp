// SPDX-License-Identifier: Apache-2.0
#include "client/commands/WhoExplanation.h"

#include "client/bus/ContactPages.h"
#include "client/bus/DirectoryService.h"
#include "client/bus/PeerServices.h"
#include "client/commands/Report.h"
#include "platform/records/ContactNumbers.h"

#include <QJsonArray>

namespace {

QString called(const Contact &contact)
{
    return QStringLiteral("%1 (%2)").arg(contact.displayName(), contact.contactId);
}

QString reasonOf(const ContactNumber &number, const QString &canonical)
{
    if (number.canonical == number.value && !canonical.isEmpty() && canonical.front() != number.canonical.front())
        return QStringLiteral(
            "stored as it was written: read as an extension, under other rules, or without telephony");
    return QStringLiteral("another number: its canonical form is %1").arg(number.canonical);
}

} // namespace

QList<QJsonObject> WhoAnswer::toJson() const
{
    QList<QJsonObject> objects;
    for (const Contact &contact : contacts) {
        QJsonArray fields;
        for (const ContactNumber &met : ContactNumbers::equalTo(contact, canonical))
            fields.append(met.field);
        objects.append(RecordJson::ofFound(contact));
        objects.last().insert(QLatin1String("matchedFields"), fields);
    }
    return objects;
}

WhoExplanation::WhoExplanation(const WhoAnswer &answer, const BusSession &bus)
    : m_answer(answer)
    , m_dialable(TelephonyService(bus).dialable(answer.number).number)
{
    readRules(bus);
    const bool isOnPhone = !answer.contacts.isEmpty() && !answer.contacts.first().isOfCompany();
    if (!isOnPhone)
        findNearMisses(bus);
}

void WhoExplanation::readRules(const BusSession &bus)
{
    const SettingsService settings(bus);
    try {
        m_rules = DialingRuleTexts{settings.valueOrNothing(QStringLiteral("DialingRuleCountryCode")),
                                   settings.valueOrNothing(QStringLiteral("DialingRuleAreaCode")),
                                   settings.valueOrNothing(QStringLiteral("DialingRuleExternalPrefix")),
                                   settings.valueOrNothing(QStringLiteral("DialingRuleMinNumberLength")).toInt()};
    } catch (const CommandFailure &failure) {
        m_rulesFault = failure.text();
    }
}

void WhoExplanation::findNearMisses(const BusSession &bus)
{
    const QString ending = NumberReading::ending(m_answer.canonical);
    if (ending.isEmpty())
        return;
    const DirectoryService directory(bus);
    ContactPages pages([&directory](int from, int count) { return directory.page(from, count); });
    for (const Contact &contact : pages.read(0, ContactPages::toTheEnd)) {
        for (const ContactNumber &number : ContactNumbers::of(contact)) {
            if (NumberReading::ending(number.value) == ending || NumberReading::ending(number.canonical) == ending)
                m_nearMisses.append(
                    {contact, number.label + QLatin1Char(' ') + number.value, reasonOf(number, m_answer.canonical)});
        }
    }
}

QString WhoExplanation::how() const
{
    if (m_answer.telephonyFault)
        return QStringLiteral("as it stands: %1").arg(m_answer.telephonyFault->text());
    return m_rules ? NumberReading::explain(m_dialable, m_answer.canonical, *m_rules)
                   : QStringLiteral("by rules that are not known");
}

QList<std::pair<QString, QString>> WhoExplanation::lines() const
{
    QList<std::pair<QString, QString>> lines{
        {QStringLiteral("number"), m_answer.number},
        {QStringLiteral("dialled"), m_dialable},
        {QStringLiteral("rules"), m_rules ? m_rules->toString() : m_rulesFault},
        {QStringLiteral("canonical"), QStringLiteral("%1: %2").arg(m_answer.canonical, how())}};
    for (const Contact &contact : m_answer.contacts) {
        const QString where = contact.isOfCompany() ? QStringLiteral("company") : QStringLiteral("phone");
        const QString numbers = ContactNumbers::toString(ContactNumbers::equalTo(contact, m_answer.canonical));
        lines.append({where, called(contact) + (numbers.isEmpty() ? QString() : QLatin1String(", ") + numbers)});
    }
    for (const NearMiss &miss : m_nearMisses)
        lines.append(
            {QStringLiteral("near"), QStringLiteral("%1, %2, %3").arg(called(miss.contact), miss.number, miss.reason)});
    if (m_answer.contacts.isEmpty() && m_nearMisses.isEmpty())
        lines.append({QStringLiteral("phone"), QStringLiteral("no number ends with the same eight digits")});
    return lines;
}

void WhoExplanation::print(const CommandContext &context) const
{
    if (!context.json) {
        constexpr int column = 11;
        for (const auto &[what, text] : lines())
            context.out << what.leftJustified(column) << Printable::text(text) << '\n';
        return;
    }
    QJsonArray found;
    for (const QJsonObject &contact : m_answer.toJson())
        found.append(contact);
    QJsonArray near;
    for (const NearMiss &miss : m_nearMisses)
        near.append(QJsonObject{{QStringLiteral("contactId"), miss.contact.contactId},
                                {QStringLiteral("number"), miss.number},
                                {QStringLiteral("reason"), miss.reason}});
    Report::json(context.out, {{QStringLiteral("number"), m_answer.number},
                               {QStringLiteral("dialled"), m_dialable},
                               {QStringLiteral("canonical"), m_answer.canonical},
                               {QStringLiteral("how"), how()},
                               {QStringLiteral("rules"), m_rules ? m_rules->toString() : m_rulesFault},
                               {QStringLiteral("found"), found},
                               {QStringLiteral("near"), near}});
}
