// SPDX-License-Identifier: Apache-2.0
#include "platform/records/Contact.h"

#include <QDBusMetaType>

const std::array<Contact::TextField, Contact::textCount> Contact::texts{{
    {"contactId", &Contact::contactId},
    {"loginName", &Contact::loginName},
    {"salutation", &Contact::salutation},
    {"firstName", &Contact::firstName},
    {"name", &Contact::name},
    {"latinFirstName", &Contact::latinFirstName},
    {"latinName", &Contact::latinName},
    {"language", &Contact::language},
    {"timezone", &Contact::timezone},
    {"officePhone", &Contact::officePhone},
    {"officePhoneCan", &Contact::officePhoneCan},
    {"attendant", &Contact::attendant},
    {"colleague", &Contact::colleague},
    {"assistant", &Contact::assistant},
    {"email", &Contact::email},
    {"fax", &Contact::fax},
    {"faxCan", &Contact::faxCan},
    {"voicemail", &Contact::voicemail},
    {"personalHome", &Contact::personalHome},
    {"personalHomeCan", &Contact::personalHomeCan},
    {"personalMobile", &Contact::personalMobile},
    {"personalMobileCan", &Contact::personalMobileCan},
    {"personalFax", &Contact::personalFax},
    {"personalFaxCan", &Contact::personalFaxCan},
    {"personalEmail", &Contact::personalEmail},
    {"collaborationId", &Contact::collaborationId},
}};

bool Contact::isAnonymous() const
{
    constexpr QLatin1String anonymous("anonymous");
    return personalMobile == anonymous || fax == anonymous || officePhone == anonymous || personalFax == anonymous ||
           personalHomeCan == anonymous;
}

QDBusArgument &operator<<(QDBusArgument &argument, const Contact &contact)
{
    argument.beginStructure();
    for (const Contact::TextField &field : Contact::texts)
        argument << contact.*field.value;
    argument << contact.misc << contact.isPreviewed << contact.isPrivate << contact.type << contact.photo
             << contact.melody << contact.getPUID() << contact.getLastModificationDate();
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Contact &contact)
{
    QString puid;
    QDateTime modified;
    argument.beginStructure();
    for (const Contact::TextField &field : Contact::texts)
        argument >> contact.*field.value;
    argument >> contact.misc >> contact.isPreviewed >> contact.isPrivate >> contact.type >> contact.photo >>
        contact.melody >> puid >> modified;
    argument.endStructure();
    contact.setPUID(puid);
    contact.setLastModificationDate(modified);
    return argument;
}

void registerDBusContact()
{
    qDBusRegisterMetaType<QMap<QString, QString>>();
    qDBusRegisterMetaType<Contact>();
    qDBusRegisterMetaType<ListContact>();
    qRegisterMetaType<ListContact>("ListContact");
}
