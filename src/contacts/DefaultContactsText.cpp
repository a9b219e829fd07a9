// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/DefaultContactsText.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"

#include <QStringList>

#include <array>

namespace {

constexpr QLatin1String sharpMarker("escSharp");
constexpr QLatin1String commaMarker("escComa");

constexpr qsizetype shortForm = 8;
constexpr qsizetype previewPosition = 5;
// In the order of the fields; the sixth is a flag.
constexpr std::array<QString Contact::*, 14> texts{
    &Contact::contactId,      &Contact::salutation,      &Contact::firstName,
    &Contact::name,           &Contact::officePhone,     nullptr,
    &Contact::email,          &Contact::photo,           &Contact::fax,
    &Contact::personalMobile, &Contact::personalHome,    &Contact::personalEmail,
    &Contact::personalFax,    &Contact::collaborationId,
};
constexpr std::array<QLatin1String, 6> miscKeys{
    QLatin1String("company"), QLatin1String("job"), QLatin1String("address"),
    QLatin1String("city"),    QLatin1String("zip"), QLatin1String("country"),
};
constexpr qsizetype longForm = texts.size() + miscKeys.size();

QStringList fieldsOf(const QString &record)
{
    QStringList fields = record.split(QLatin1Char(','));
    for (QString &field : fields)
        field.replace(sharpMarker, QLatin1String("#")).replace(commaMarker, QLatin1String(","));
    return fields;
}

Contact contactOf(const QStringList &fields)
{
    Contact contact;
    contact.isPreviewed = fields.at(previewPosition) == QLatin1String("1");
    for (qsizetype i = 0; i < qMin(fields.size(), qsizetype(texts.size())); ++i) {
        if (i != previewPosition)
            contact.*texts.at(size_t(i)) = fields.at(i);
    }
    for (qsizetype i = texts.size(); i < fields.size(); ++i)
        contact.misc.insert(miscKeys.at(size_t(i) - texts.size()), fields.at(i));
    return contact;
}

} // namespace

ListContact DefaultContactsText::contacts(const QString &text)
{
    QString marked = text;
    marked.replace(QLatin1String("\\#"), sharpMarker).replace(QLatin1String("\\,"), commaMarker);
    ListContact result;
    for (const QString &record : marked.split(QLatin1Char('#'))) {
        const QStringList fields = fieldsOf(record);
        if (fields.size() == shortForm || fields.size() == longForm)
            result.append(contactOf(fields));
        else
            KestinLogger::warning("Ignoring DM contact string defined as %1. Number of arguments incorrect (8 or 20)",
                                  AddressText::withoutUserInfo(record));
    }
    return result;
}
