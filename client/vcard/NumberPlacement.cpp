// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/NumberPlacement.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

struct Number
{
    QString number;
    QString extension;
};

/// A number as it is dialled; version 4.0 writes "tel:+33-1-55;ext=102". Elsewhere a semicolon is a waiting sign.
Number numberOf(const VCardProperty &telephone)
{
    static const QRegularExpression scheme(QStringLiteral("^(tel|sips?):"), QRegularExpression::CaseInsensitiveOption);
    const QString text = telephone.text().simplified();
    const QRegularExpressionMatch match = scheme.match(text);
    if (!match.hasMatch())
        return {text, {}};
    const QStringList parts = text.mid(match.capturedEnd()).split(QLatin1Char(';'));
    Number result{parts.first(), {}};
    for (const QString &parameter : parts) {
        if (parameter.startsWith(QLatin1String("ext="), Qt::CaseInsensitive))
            result.extension = parameter.mid(4);
    }
    return result;
}

bool isExtension(const QString &number)
{
    static const QRegularExpression fewDigits(QStringLiteral("^[0-9]{1,6}$"));
    return fewDigits.match(number).hasMatch();
}

bool saysExtension(const VCardProperty &telephone)
{
    return std::any_of(telephone.types.begin(), telephone.types.end(), [](const QString &type) {
        return type.contains(QLatin1String("extension")) || type == QLatin1String("x-internal");
    });
}

/// Where a number belongs, best place first. A number without a place says neither whose nor what it is.
QList<QString Contact::*> placesOf(const VCardProperty &telephone)
{
    if (telephone.is("fax"))
        return {&Contact::fax};
    if (telephone.is("cell") || telephone.is("mobile") || telephone.is("car"))
        return {&Contact::personalMobile};
    if (saysExtension(telephone))
        return {&Contact::personalFax};
    if (telephone.is("home"))
        return {&Contact::personalHome};
    if (telephone.is("work"))
        return {&Contact::officePhone, &Contact::personalFax};
    return {};
}

} // namespace

bool NumberPlacement::put(const QString &number, const QList<Field> &fields)
{
    for (const Field field : fields) {
        if ((m_contact.*field).isEmpty()) {
            m_contact.*field = number;
            return true;
        }
    }
    return false;
}

/// Where a caller is recognised by it, whatever the field is called, else where nobody looks.
void NumberPlacement::putAnywhere(const QString &number)
{
    static const QList<Field> fields{&Contact::fax, &Contact::officePhone, &Contact::personalHome,
                                     &Contact::personalMobile, &Contact::personalFax};
    const bool isThere =
        std::any_of(fields.begin(), fields.end(), [&](const Field field) { return m_contact.*field == number; });
    if (isThere || put(number, fields))
        return;
    m_contact.misc.insert(QStringLiteral("phone%1").arg(++m_overflow), number);
    m_unreachable.append(number);
}

void NumberPlacement::separateExtension()
{
    if (isExtension(m_contact.officePhone) && !m_contact.personalFax.isEmpty() && !isExtension(m_contact.personalFax))
        std::swap(m_contact.officePhone, m_contact.personalFax);
}

void NumberPlacement::place(VCardProperties telephones)
{
    VCardProperty::sortByPreference(telephones);
    QStringList withoutPlace;
    QStringList extensions;
    QStringList displaced;
    for (const VCardProperty &telephone : std::as_const(telephones)) {
        const Number number = numberOf(telephone);
        const QList<Field> places = placesOf(telephone);
        if (number.number.isEmpty())
            continue;
        if (places.isEmpty())
            withoutPlace.append(number.number);
        else if (!put(number.number, places))
            displaced.append(number.number);
        if (!number.extension.isEmpty())
            extensions.append(number.extension);
    }
    for (const QString &extension : std::as_const(extensions)) {
        if (!put(extension, {&Contact::personalFax}))
            displaced.append(extension);
    }
    for (const QString &number : std::as_const(withoutPlace)) {
        if (!put(number, {&Contact::officePhone, &Contact::fax, &Contact::personalFax}))
            displaced.append(number);
    }
    for (const QString &number : std::as_const(displaced))
        putAnywhere(number);
    separateExtension();
}
