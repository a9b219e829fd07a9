// SPDX-License-Identifier: Apache-2.0
#include "platform/records/ContactNumbers.h"

#include <QStringList>

QList<ContactNumber> ContactNumbers::of(const Contact &contact)
{
    QList<ContactNumber> numbers{
        {QLatin1String("office"), QLatin1String("officePhone"), contact.officePhone, contact.officePhoneCan},
        {QLatin1String("mobile"), QLatin1String("personalMobile"), contact.personalMobile, contact.personalMobileCan},
        {QLatin1String("home"), QLatin1String("personalHome"), contact.personalHome, contact.personalHomeCan},
        {QLatin1String("fax"), QLatin1String("fax"), contact.fax, contact.faxCan},
        {QLatin1String("extension"), QLatin1String("personalFax"), contact.personalFax, contact.personalFaxCan}};
    numbers.removeIf([](const ContactNumber &number) { return number.value.isEmpty() && number.canonical.isEmpty(); });
    return numbers;
}

QList<ContactNumber> ContactNumbers::equalTo(const Contact &contact, const QString &canonical)
{
    QList<ContactNumber> numbers = of(contact);
    numbers.removeIf([&canonical](const ContactNumber &number) { return number.canonical != canonical; });
    return numbers;
}

QString ContactNumbers::toString(const QList<ContactNumber> &numbers)
{
    QStringList texts;
    for (const ContactNumber &number : numbers)
        texts.append(number.label + QLatin1Char(' ') + number.value);
    return texts.join(QLatin1String(", "));
}
