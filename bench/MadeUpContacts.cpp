// SPDX-License-Identifier: Apache-2.0
#include "bench/MadeUpContacts.h"

#include <array>

namespace {

constexpr std::array firstNames{"Zoë",   "Émile", "Ingrid", "Tomás", "Aiko", "Bengt", "Chloé",   "Dario",
                                "Fatou", "Gül",   "Hanna",  "Ivan",  "Jörg", "Kofi",  "Liudmila"};
constexpr std::array lastNames{"Müller",   "Okafor",   "Castellanos", "Dubois",   "Ericsson", "Fontaine",
                               "Grünberg", "Hoang",    "Ibáñez",      "Jansen",   "Kowalska", "Lindqvist",
                               "Moreau",   "Nakamura", "O'Brien",     "Petrović", "Rossi"};

QString numbered(const char *prefix, int index)
{
    return QLatin1String(prefix) + QString::number(index).rightJustified(6, QLatin1Char('0'));
}

/// The number of hits of the group that the contact belongs to; 0: to none.
int hitsOf(int index)
{
    if (index >= 10000)
        return 0;
    if (index >= 1000)
        return index % 9 < 2 ? 2000 : 0;
    if (index % 5 == 1)
        return 200;
    if (index % 50 == 2)
        return 20;
    return index == 503 ? 1 : 0;
}

QString lastName(int index)
{
    for (const MadeUpContacts::NameGroup &group : MadeUpContacts::nameGroups) {
        if (group.hits == hitsOf(index))
            return QLatin1String(group.name);
    }
    return QString::fromUtf8(lastNames[std::size_t(index) % lastNames.size()]);
}

} // namespace

QStringList MadeUpContacts::rawNumbers(int index)
{
    return {numbered("+33 3 88 ", index), numbered("+33 3 89 ", index), numbered("+33 6 12 ", index),
            numbered("+33 3 90 ", index), QString::number(10000 + index % 90000)};
}

QStringList MadeUpContacts::canonicalNumbers(int index)
{
    return {numbered("+33388", index), numbered("+33389", index), numbered("+33612", index), numbered("+33390", index)};
}

Contact MadeUpContacts::contact(int index)
{
    const QStringList numbers = rawNumbers(index);
    const QString number = QString::number(index);
    Contact contact;
    contact.firstName = QString::fromUtf8(firstNames[std::size_t(index) % firstNames.size()]);
    contact.name = lastName(index) + QLatin1Char(' ') + number;
    contact.salutation = QStringLiteral("Dr.");
    contact.language = QStringLiteral("fr");
    contact.timezone = QStringLiteral("Europe/Paris");
    contact.email = QStringLiteral("person%1@example.com").arg(number);
    contact.personalEmail = QStringLiteral("person%1@example.org").arg(number);
    contact.collaborationId = QStringLiteral("person%1@im.example.com").arg(number);
    contact.officePhone = numbers.at(0);
    contact.fax = numbers.at(1);
    contact.personalMobile = numbers.at(2);
    contact.personalHome = numbers.at(3);
    contact.personalFax = numbers.at(4);
    contact.misc.insert(QStringLiteral("company"), QStringLiteral("Example Works"));
    return contact;
}
