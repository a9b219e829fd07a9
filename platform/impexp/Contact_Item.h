// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_Item.h"

#include <QByteArray>
#include <QDateTime>
#include <QStringList>

/// A whole contact.
class Contact_Item : public ImpExp_Item
{
public:
    struct Values
    {
        QString duid;
        QString puid;
        QDateTime lastModificationDate;
        QString firstName;
        QString lastName;
        QString email;
        QString personalEmail;
        QString officePhone;
        QString personalHome;
        QString personalMobile;
        QByteArray photo; ///< base64
        QString collaborationId;
        QString officePhone2; ///< the extension
        QString otherPhone;   ///< the fax number
        QString company;
        QString assistant;
        QString jobTitle;
    };

    /// Every value gets its element. Only a photo or a date that is missing gets no element.
    explicit Contact_Item(const Values &values);

    /// Whether a contact has an element of this name; a reader skips all others.
    static bool isElement(QStringView name);
};
