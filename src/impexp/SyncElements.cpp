// SPDX-License-Identifier: Apache-2.0
#include "src/impexp/SyncElements.h"

#include "platform/impexp/ImpExp_Format.h"

#include <array>

namespace {

struct Text
{
    QLatin1String element;
    QString Contact::*field;
};
constexpr std::array texts{
    Text{QLatin1String("firstName"), &Contact::firstName},
    Text{QLatin1String("lastName"), &Contact::name},
    Text{QLatin1String("email"), &Contact::email},
    Text{QLatin1String("personalEmail"), &Contact::personalEmail},
    Text{QLatin1String("officePhone"), &Contact::officePhone},
    Text{QLatin1String("personalHome"), &Contact::personalHome},
    Text{QLatin1String("personalMobile"), &Contact::personalMobile},
    Text{QLatin1String("collaborationId"), &Contact::collaborationId},
    Text{QLatin1String("officePhone2"), &Contact::personalFax},
    Text{QLatin1String("otherPhone"), &Contact::fax},
};

struct Pair
{
    QLatin1String element;
    QLatin1String key;
};
constexpr std::array pairs{
    Pair{QLatin1String("company"), QLatin1String("company")},
    Pair{QLatin1String("jobTitle"), QLatin1String("job")},
};

constexpr QLatin1String assistant("assistant");

} // namespace

Contact_Item SyncElements::itemOf(const Contact &contact, const QByteArray &photo)
{
    return Contact_Item({
        .duid = contact.contactId,
        .puid = contact.getPUID(),
        .lastModificationDate = contact.getLastModificationDate(),
        .firstName = contact.firstName,
        .lastName = contact.name,
        .email = contact.email,
        .personalEmail = contact.personalEmail,
        .officePhone = contact.officePhone,
        .personalHome = contact.personalHome,
        .personalMobile = contact.personalMobile,
        .photo = photo.toBase64(),
        .collaborationId = contact.collaborationId,
        .officePhone2 = contact.personalFax,
        .otherPhone = contact.fax,
        .company = contact.misc.value(pairs[0].key),
        .assistant = contact.assistant,
        .jobTitle = contact.misc.value(pairs[1].key),
    });
}

void SyncElements::copy(const ImpExp_Item &item, Contact &contact)
{
    for (const Text &text : texts)
        contact.*text.field = item.getElement(text.element);
    if (item.hasElement(assistant))
        contact.assistant = item.getElement(assistant);
    if (item.hasAttribute(ImpExp_Format::puid))
        contact.setPUID(item.getAttribute(ImpExp_Format::puid));
    for (const Pair &pair : pairs) {
        const QString value = item.getElement(pair.element);
        if (value.isEmpty())
            contact.misc.remove(pair.key);
        else
            contact.misc.insert(pair.key, value);
    }
}
