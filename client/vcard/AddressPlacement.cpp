// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/AddressPlacement.h"

#include "client/vcard/MiscPairs.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

QString joined(QStringList parts)
{
    parts.removeAll(QString());
    return parts.join(QLatin1String(", "));
}

/// Without the scheme, where there is nothing else to be thought of.
QString messagingAddress(const VCardProperty &property)
{
    static const QRegularExpression usual(QStringLiteral("^(im|xmpp):"), QRegularExpression::CaseInsensitiveOption);
    const QString address = property.part(0).remove(usual);
    const bool isBareSip = property.name == QLatin1String("X-SIP") && !address.contains(QLatin1Char(':'));
    return isBareSip ? QLatin1String("sip:") + address : address;
}

/// Street, city, region, code, country of: post-office box, what is added to the street, street, and the others.
QStringList partsOf(const VCardProperty &house)
{
    return {joined({house.part(2), house.part(1), house.part(0)}), house.part(3), house.part(4), house.part(5),
            house.part(6)};
}

} // namespace

void AddressPlacement::placeEmails(VCardProperties emails)
{
    VCardProperty::sortByPreference(emails);
    QStringList displaced;
    const auto put = [](QString &field, const QString &address) {
        const bool isFree = field.isEmpty();
        if (isFree)
            field = address;
        return isFree;
    };
    for (const VCardProperty &email : std::as_const(emails)) {
        const bool isPlaced = (email.is("work") && put(m_contact.email, email.part(0))) ||
                              (email.is("home") && put(m_contact.personalEmail, email.part(0)));
        if (!isPlaced)
            displaced.append(email.part(0));
    }
    for (const QString &address : std::as_const(displaced)) {
        const bool isThere = address == m_contact.email || address == m_contact.personalEmail;
        if (!isThere && !put(m_contact.email, address) && !put(m_contact.personalEmail, address))
            MiscPairs::add(m_contact, QStringLiteral("email"), address);
    }
}

void AddressPlacement::placeMessaging(VCardProperties addresses)
{
    VCardProperty::sortByPreference(addresses);
    for (const VCardProperty &property : std::as_const(addresses)) {
        const QString address = messagingAddress(property);
        if (m_contact.collaborationId.isEmpty())
            m_contact.collaborationId = address;
        else if (m_contact.collaborationId != address)
            MiscPairs::add(m_contact, QStringLiteral("im"), address);
    }
}

bool AddressPlacement::putHouse(const VCardProperty &house, const char *const (&keys)[5])
{
    const bool isTaken = std::any_of(std::begin(keys), std::end(keys),
                                     [this](const char *key) { return m_contact.misc.contains(QLatin1String(key)); });
    if (isTaken)
        return false;
    const QStringList parts = partsOf(house);
    for (qsizetype place = 0; place < parts.size(); ++place) {
        if (!parts.at(place).isEmpty())
            m_contact.misc.insert(QLatin1String(keys[place]), parts.at(place));
    }
    return true;
}

void AddressPlacement::placeHouses(VCardProperties houses)
{
    VCardProperty::sortByPreference(houses);
    for (const VCardProperty &house : std::as_const(houses)) {
        if (!putHouse(house, house.is("home") && !house.is("work") ? homeHouse : workHouse))
            MiscPairs::add(m_contact, QStringLiteral("otherAddress"), joined(partsOf(house)));
    }
}
