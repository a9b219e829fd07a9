// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/Contact_Item.h"

#include "platform/impexp/ImpExp_Format.h"
#include "platform/impexp/ImpExp_Text.h"

#include <algorithm>
#include <array>

namespace {

constexpr QLatin1String dateElement("lastModificationDate");

struct Element
{
    QString name; // shared by all items: nothing is allocated for it
    QString Contact_Item::Values::*value;
};

const std::array textElements{
    Element{QString(ImpExp_Format::duid), &Contact_Item::Values::duid},
    Element{QString(ImpExp_Format::puid), &Contact_Item::Values::puid},
    Element{QStringLiteral("firstName"), &Contact_Item::Values::firstName},
    Element{QStringLiteral("lastName"), &Contact_Item::Values::lastName},
    Element{QStringLiteral("email"), &Contact_Item::Values::email},
    Element{QStringLiteral("personalEmail"), &Contact_Item::Values::personalEmail},
    Element{QStringLiteral("officePhone"), &Contact_Item::Values::officePhone},
    Element{QStringLiteral("personalHome"), &Contact_Item::Values::personalHome},
    Element{QStringLiteral("personalMobile"), &Contact_Item::Values::personalMobile},
    Element{QStringLiteral("collaborationId"), &Contact_Item::Values::collaborationId},
    Element{QStringLiteral("officePhone2"), &Contact_Item::Values::officePhone2},
    Element{QStringLiteral("otherPhone"), &Contact_Item::Values::otherPhone},
    Element{QStringLiteral("company"), &Contact_Item::Values::company},
    Element{QStringLiteral("assistant"), &Contact_Item::Values::assistant},
    Element{QStringLiteral("jobTitle"), &Contact_Item::Values::jobTitle},
};

} // namespace

Contact_Item::Contact_Item(const Values &values)
    : ImpExp_Item(ImpExp_Format::contact)
{
    setAttribute(ImpExp_Format::duid, values.duid);
    setAttribute(ImpExp_Format::puid, values.puid);
    for (const Element &element : textElements)
        setElement(element.name, values.*element.value);
    const QString date = ImpExp_Text::ofTime(values.lastModificationDate);
    if (!date.isEmpty())
        setElement(dateElement, date);
    if (!values.photo.isEmpty())
        setElement(ImpExp_Format::photo, QString::fromLatin1(values.photo));
}

bool Contact_Item::isElement(QStringView name)
{
    return name == dateElement || name == ImpExp_Format::photo ||
           std::any_of(textElements.cbegin(), textElements.cend(),
                       [&](const Element &element) { return element.name == name; });
}
