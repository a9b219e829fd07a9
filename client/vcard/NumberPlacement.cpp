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

/// A number as it is dialled; version 4.0 writes "tel:+33-1-55;ext=102".
Number numberOf(const VCardProperty &telephone)
{
    static const QRegularExpression scheme(QStringLiteral("^(tel|sips?):"), QRegularExpression::CaseInsensitiveOption);
    Number result{telephone.part(0).remove(scheme), {}};
    for (qsizetype index = 1; index < telephone.values.size(); ++index) {
        const QString parameter = telephone.part(index);
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

void NumberPlacement::placeOne(const QString &number, const QList<Field> &fields)
{
    for (const Field field : fields) {
        if ((m_contact.*field).isEmpty()) {
            m_contact.*field = number;
            return;
        }
    }
    m_contact.misc.insert(QStringLiteral("phone%1").arg(++m_overflow), number);
}

void NumberPlacement::separateExtension()
{
    if (isExtension(m_contact.officePhone) && !m_contact.personalFax.isEmpty() && !isExtension(m_contact.personalFax))
        std::swap(m_contact.officePhone, m_contact.personalFax);
}

void NumberPlacement::place(const VCardProperties &telephones)
{
    QStringList withoutPlace;
    QStringList extensions;
    for (const VCardProperty &telephone : telephones) {
        const Number number = numberOf(telephone);
        const QList<Field> places = placesOf(telephone);
        if (number.number.isEmpty())
            continue;
        if (places.isEmpty())
            withoutPlace.append(number.number);
        else
            placeOne(number.number, places);
        if (!number.extension.isEmpty())
            extensions.append(number.extension);
    }
    for (const QString &extension : extensions)
        placeOne(extension, {&Contact::personalFax});
    for (const QString &number : withoutPlace)
        placeOne(number, {&Contact::officePhone, &Contact::fax, &Contact::personalFax});
    separateExtension();
}
