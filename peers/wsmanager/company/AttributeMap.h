// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/LdapAttribute.h"
#include "platform/records/Contact.h"

#include <QMap>

/// Which attributes of an entry become which fields of a contact. Starts out as fits inetOrgPerson.
///
/// A field is a text field of Contact, "photo", or a misc pair ("misc.company"). The first of its attributes that has a
/// value gives the field.
class AttributeMap
{
public:
    AttributeMap();

    /// `attributes`: none leave the field empty. False when there is no such field.
    bool set(const QString &field, const QStringList &attributes);

    /// Fields that come from somewhere, in alphabetical order.
    QStringList fields() const { return m_attributes.keys(); }
    /// The attributes behind a field given without regard to case and with or without its "misc."; none when unknown.
    QList<LdapAttribute> attributesOf(const QString &field) const;
    QStringList fieldsLike(const QString &field) const;
    /// Names of all attributes that a contact is made of, each once.
    QStringList attributeNames() const;

    /// Whether numbers are kept in the field.
    static bool isNumber(const QString &field);
    /// The fields by which somebody who calls is found.
    static QStringList callerFields();

    Contact contactOf(const DirectoryEntry &entry) const;
    /// The value of a contact's field or misc pair; "imAddress" is its collaborationId.
    static QString valueOf(const Contact &contact, const QString &field);

    /// A contact's id that leads back to the entry: its DN, percent-encoded where needed, and "##".
    static QString contactIdOf(const QString &dn);
    static QString dnOf(const QString &contactId);

private:
    static void fill(Contact &contact, const QString &field, const QString &value);

    QMap<QString, QList<LdapAttribute>> m_attributes;
};
