// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QByteArray>
#include <QByteArrayList>

/// Writes a contact as a vCard 3.0, which more programs read than any other version. VCardReader makes the same contact
/// of the card: whatever the reader would not take from the common properties is added as OwnProperties. What the
/// directory makes by itself is left out: id, latin names, canonical numbers, type, persistent id and date.
class VCardWriter
{
public:
    /// `picture` is embedded as the card's photo. Where it is empty, and the contact's photo is a web address or the
    /// path of a file, the card names that. Readers take only the address.
    static QByteArray write(const Contact &contact, const QByteArray &picture = {});

private:
    explicit VCardWriter(const Contact &contact);

    void addPerson();
    void addAddresses();
    void addPlace();
    void addMisc();
    void addPhoto(const QByteArray &picture);
    void addOwn();
    /// A property with its parameters, and the parts of its value; nothing when all of them are empty.
    void add(const QByteArray &property, const QStringList &parts);
    void addLine(const QByteArray &line);
    QString misc(const char *key) const { return m_contact.misc.value(QLatin1String(key)); }

    const Contact &m_contact;
    QByteArray m_text;
};
