// SPDX-License-Identifier: Apache-2.0
// Any text at all as the setting of the default contacts: what was read, written again, is read as the same.
#include "fuzz/Promise.h"
#include "platform/framework/KestinLogger.h"
#include "src/contacts/DefaultContactsText.h"

#include <QStringList>

namespace {

constexpr QString Contact::*firstTexts[] = {&Contact::contactId, &Contact::salutation, &Contact::firstName,
                                            &Contact::name, &Contact::officePhone};
constexpr QString Contact::*lastTexts[] = {
    &Contact::email,        &Contact::photo,         &Contact::fax,         &Contact::personalMobile,
    &Contact::personalHome, &Contact::personalEmail, &Contact::personalFax, &Contact::collaborationId,
};

QStringList fieldsOf(const Contact &contact)
{
    QStringList fields;
    for (const auto text : firstTexts)
        fields.append(contact.*text);
    fields.append(contact.isPreviewed ? QStringLiteral("1") : QStringLiteral("0"));
    for (const auto text : lastTexts)
        fields.append(contact.*text);
    for (const char *key : {"company", "job", "address", "city", "zip", "country"})
        fields.append(contact.misc.value(QLatin1String(key)));
    return fields;
}

/// Whether the form can carry it: a backslash at the end of a field would escape what separates it from the next.
bool canBeWritten(const QStringList &fields)
{
    for (const QString &field : fields) {
        if (field.endsWith(QLatin1Char('\\')) || field.contains(QLatin1String("escSharp")) ||
            field.contains(QLatin1String("escComa")))
            return false;
    }
    return true;
}

QString written(QStringList fields)
{
    for (QString &field : fields)
        field.replace(QLatin1Char('#'), QLatin1String("\\#")).replace(QLatin1Char(','), QLatin1String("\\,"));
    return fields.join(QLatin1Char(','));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    KestinLogger::setLevel(KestinLogger::Error);
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const ListContact contacts = DefaultContactsText::contacts(text);
    promise(contacts.size() <= text.count(QLatin1Char('#')) + 1, "no more contacts than records");
    for (const Contact &contact : contacts) {
        const QStringList fields = fieldsOf(contact);
        if (!canBeWritten(fields))
            continue;
        const ListContact again = DefaultContactsText::contacts(written(fields));
        promise(again.size() == 1 && fieldsOf(again.first()) == fields, "a contact that was written is read again");
    }
    return 0;
}
