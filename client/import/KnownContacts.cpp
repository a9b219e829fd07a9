// SPDX-License-Identifier: Apache-2.0
#include "client/import/KnownContacts.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr QString Contact::*numbers[] = {&Contact::officePhone, &Contact::personalMobile, &Contact::personalHome,
                                         &Contact::fax, &Contact::personalFax};
constexpr QString Contact::*addresses[] = {&Contact::email, &Contact::personalEmail, &Contact::collaborationId};

/// A national number with its area code, in most countries.
constexpr qsizetype significantDigits = 9;

QString lastDigits(const QString &number)
{
    QString digits;
    for (const QChar character : number) {
        if (character.isDigit())
            digits += QLatin1Char(char('0' + character.digitValue()));
        else if (!digits.isEmpty() && QStringView(u",;pw").contains(character.toLower()))
            break; // what is dialled after a wait
    }
    return digits.right(significantDigits);
}

/// The directory keeps numbers without what only separates their digits.
bool isSameNumber(const QString &number, const QString &other)
{
    static const QRegularExpression separators(QStringLiteral("\\(0\\)|[\\s().\\-/]"));
    return QString(number).remove(separators) == QString(other).remove(separators);
}

bool isNumber(QString Contact::*field)
{
    return std::find(std::begin(numbers), std::end(numbers), field) != std::end(numbers);
}

QString uidOf(const Contact &contact)
{
    static const QLatin1String scheme("urn:uuid:");
    const QString uid = contact.misc.value(QStringLiteral("uid")).trimmed().toLower();
    return uid.startsWith(scheme) ? uid.mid(scheme.size()) : uid;
}

/// What identifies the contact, best first.
QStringList keysOf(const Contact &contact)
{
    QStringList keys;
    if (const QString uid = uidOf(contact); !uid.isEmpty())
        keys.append(QLatin1Char('u') + uid);
    const QString name = (contact.firstName + QLatin1Char(' ') + contact.name).simplified().toCaseFolded();
    bool isBare = true;
    const auto append = [&](QChar kind, const QString &value) {
        if (!value.isEmpty())
            keys.append(kind + name + QLatin1Char('\n') + value);
        isBare = isBare && value.isEmpty();
    };
    for (const auto number : numbers)
        append(u'n', lastDigits(contact.*number));
    for (const auto address : addresses)
        append(u'a', (contact.*address).trimmed().toLower());
    if (isBare)
        keys.append(QLatin1Char('b') + name);
    return keys;
}

} // namespace

void KnownContacts::add(const Contact &contact, const QString &id)
{
    for (const QString &key : keysOf(contact)) {
        if (!m_ids.contains(key))
            m_ids.insert(key, id);
    }
}

void KnownContacts::forget(const Contact &contact)
{
    for (const QString &key : keysOf(contact)) {
        if (const auto found = m_ids.constFind(key); found != m_ids.cend() && found->isEmpty())
            m_ids.erase(found);
    }
}

std::optional<QString> KnownContacts::find(const Contact &card) const
{
    for (const QString &key : keysOf(card)) {
        if (const auto found = m_ids.constFind(key); found != m_ids.cend())
            return *found;
    }
    return std::nullopt;
}

Contact merged(Contact stored, const Contact &card)
{
    const auto take = [&](QString Contact::*field) {
        if (!(card.*field).isEmpty())
            stored.*field = card.*field;
    };
    for (const Contact::TextField &field : Contact::texts) {
        if (!isNumber(field.value) || !isSameNumber(card.*field.value, stored.*field.value))
            take(field.value);
    }
    take(&Contact::photo);
    take(&Contact::melody);
    stored.misc.insert(card.misc);
    stored.isPrivate = stored.isPrivate || card.isPrivate;
    return stored;
}
