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
    QLatin1String name;
    QString Contact_Item::Values::*value;
};

constexpr std::array textElements{
    Element{ImpExp_Format::duid, &Contact_Item::Values::duid},
    Element{ImpExp_Format::puid, &Contact_Item::Values::puid},
    Element{QLatin1String("firstName"), &Contact_Item::Values::firstName},
    Element{QLatin1String("lastName"), &Contact_Item::Values::lastName},
    Element{QLatin1String("email"), &Contact_Item::Values::email},
    Element{QLatin1String("personalEmail"), &Contact_Item::Values::personalEmail},
    Element{QLatin1String("officePhone"), &Contact_Item::Values::officePhone},
    Element{QLatin1String("personalHome"), &Contact_Item::Values::personalHome},
    Element{QLatin1String("personalMobile"), &Contact_Item::Values::personalMobile},
    Element{QLatin1String("collaborationId"), &Contact_Item::Values::collaborationId},
    Element{QLatin1String("officePhone2"), &Contact_Item::Values::officePhone2},
    Element{QLatin1String("otherPhone"), &Contact_Item::Values::otherPhone},
    Element{QLatin1String("company"), &Contact_Item::Values::company},
    Element{QLatin1String("assistant"), &Contact_Item::Values::assistant},
    Element{QLatin1String("jobTitle"), &Contact_Item::Values::jobTitle},
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
