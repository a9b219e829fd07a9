// SPDX-License-Identifier: Apache-2.0
#include "client/text/ContactSelection.h"

#include "platform/records/ContactNumbers.h"

#include <algorithm>
#include <array>

namespace {

/// Without case and accents.
QString plain(const QString &text)
{
    QString result;
    for (const QChar character : text.normalized(QString::NormalizationForm_KD)) {
        if (!character.isMark())
            result += character;
    }
    return result.toCaseFolded();
}

/// The digits of a text that is a number as people write it; empty for any other text.
QString typedDigits(const QString &text)
{
    QString digits;
    for (const QChar character : text) {
        if (character.isDigit())
            digits += character;
        else if (!QStringLiteral(" +-./()").contains(character))
            return {};
    }
    return digits;
}

bool holdsDigits(const Contact &contact, const QString &digits)
{
    const QList<ContactNumber> numbers = ContactNumbers::of(contact);
    return std::any_of(numbers.begin(), numbers.end(), [&digits](const ContactNumber &number) {
        return typedDigits(number.value).contains(digits) || typedDigits(number.canonical).contains(digits);
    });
}

bool holds(const Contact &contact, const QString &text)
{
    const QString digits = typedDigits(text);
    if (!digits.isEmpty() && holdsDigits(contact, digits))
        return true;
    const QStringList places{contact.firstName + QLatin1Char(' ') + contact.name,
                             contact.name + QLatin1String(", ") + contact.firstName,
                             contact.misc.value(QStringLiteral("company")),
                             contact.email,
                             contact.personalEmail,
                             contact.contactId};
    return std::any_of(places.begin(), places.end(),
                       [wanted = plain(text)](const QString &place) { return plain(place).contains(wanted); });
}

using Before = bool (*)(const Contact &, const Contact &);

bool inOrder(const QString &left, const QString &right)
{
    // What is not there comes last.
    if (left.isEmpty() || right.isEmpty())
        return !left.isEmpty() && right.isEmpty();
    return QString::localeAwareCompare(left, right) < 0;
}

bool byFirstName(const Contact &left, const Contact &right)
{
    return inOrder(left.firstName, right.firstName);
}

bool byCompany(const Contact &left, const Contact &right)
{
    const QString key = QStringLiteral("company");
    return inOrder(left.misc.value(key), right.misc.value(key));
}

bool byEmail(const Contact &left, const Contact &right)
{
    return inOrder(left.email, right.email);
}

/// #CONTACT_9# before #CONTACT_10#
bool byId(const Contact &left, const Contact &right)
{
    const qsizetype leftSize = left.contactId.size();
    const qsizetype rightSize = right.contactId.size();
    return leftSize != rightSize ? leftSize < rightSize : left.contactId < right.contactId;
}

bool byDate(const Contact &left, const Contact &right)
{
    return left.getLastModificationDate() > right.getLastModificationDate();
}

struct Order
{
    const char *name;
    Before before; ///< null: as they are
};

constexpr std::array<Order, 6> namedOrders{{{"name", nullptr},
                                            {"first-name", byFirstName},
                                            {"company", byCompany},
                                            {"email", byEmail},
                                            {"id", byId},
                                            {"date", byDate}}};

} // namespace

bool ContactSelection::matches(const Contact &contact, const QStringList &texts)
{
    return std::all_of(texts.begin(), texts.end(), [&contact](const QString &text) { return holds(contact, text); });
}

QStringList ContactSelection::orders()
{
    QStringList names;
    for (const Order &order : namedOrders)
        names.append(QLatin1String(order.name));
    return names;
}

void ContactSelection::sort(ListContact &contacts, const QString &order)
{
    const auto named = std::find_if(namedOrders.begin(), namedOrders.end(), [&order](const Order &candidate) {
        return order == QLatin1String(candidate.name);
    });
    if (named != namedOrders.end() && named->before)
        std::stable_sort(contacts.begin(), contacts.end(), named->before);
}
