// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/company/AttributeMap.h"

#include "platform/records/ContactIds.h"
#include "platform/records/WebServiceCalls.h"

#include <QUrl>

#include <algorithm>
#include <array>

namespace {

constexpr QLatin1String miscPrefix("misc.");
constexpr QLatin1String photoField("photo");

struct Default
{
    const char *field;
    const char *attributes;
};

constexpr std::array defaults{Default{"collaborationId", "labeledURI#im"},
                              Default{"email", "mail"},
                              Default{"fax", "facsimileTelephoneNumber"},
                              Default{"firstName", "givenName"},
                              Default{"language", "preferredLanguage"},
                              Default{"loginName", "uid"},
                              Default{"misc.address", "street"},
                              Default{"misc.city", "l"},
                              Default{"misc.company", "o"},
                              Default{"misc.country", "c,co"},
                              Default{"misc.department", "ou"},
                              Default{"misc.job", "title"},
                              Default{"misc.zip", "postalCode"},
                              Default{"name", "sn,cn"},
                              Default{"officePhone", "telephoneNumber"},
                              Default{"personalHome", "homePhone"},
                              Default{"personalMobile", "mobile"},
                              Default{"photo", "labeledURI#photo"}};

QString Contact::*textField(const QString &name)
{
    if (name == photoField)
        return &Contact::photo;
    const auto field = std::find_if(Contact::texts.begin(), Contact::texts.end(),
                                    [&name](const auto &text) { return name == QLatin1String(text.name); });
    return field == Contact::texts.end() ? nullptr : field->value;
}

QString withoutMisc(const QString &field)
{
    return field.startsWith(miscPrefix) ? field.mid(miscPrefix.size()) : field;
}

} // namespace

AttributeMap::AttributeMap()
{
    for (const Default &entry : defaults)
        set(QLatin1String(entry.field), QString::fromLatin1(entry.attributes).split(QLatin1Char(',')));
}

bool AttributeMap::set(const QString &field, const QStringList &attributes)
{
    const bool isId = field == QLatin1String("contactId");
    if (isId || (!textField(field) && !(field.startsWith(miscPrefix) && field.size() > miscPrefix.size())))
        return false;
    QList<LdapAttribute> parsed;
    for (const QString &attribute : attributes)
        parsed.append(LdapAttribute::parsed(attribute));
    parsed.removeIf([](const LdapAttribute &attribute) { return attribute.name.isEmpty(); });
    if (parsed.isEmpty())
        m_attributes.remove(field);
    else
        m_attributes.insert(field, parsed);
    return true;
}

QStringList AttributeMap::fieldsLike(const QString &field) const
{
    QStringList result = m_attributes.keys();
    result.removeIf([&field](const QString &key) {
        return key.compare(field, Qt::CaseInsensitive) != 0 &&
               withoutMisc(key).compare(field, Qt::CaseInsensitive) != 0;
    });
    return result;
}

QList<LdapAttribute> AttributeMap::attributesOf(const QString &field) const
{
    QList<LdapAttribute> result;
    const QStringList fields = fieldsLike(field);
    for (const QString &key : fields)
        result.append(m_attributes.value(key));
    return result;
}

QStringList AttributeMap::attributeNames() const
{
    QStringList names;
    for (const QList<LdapAttribute> &attributes : m_attributes) {
        for (const LdapAttribute &attribute : attributes)
            names.append(attribute.name);
    }
    names.removeDuplicates();
    return names;
}

bool AttributeMap::isNumber(const QString &field)
{
    return callerFields().contains(field) || field == QLatin1String("fax") || field == QLatin1String("voicemail");
}

QStringList AttributeMap::callerFields()
{
    return {QStringLiteral("officePhone"), QStringLiteral("personalMobile"), QStringLiteral("personalHome"),
            QStringLiteral("personalFax")};
}

Contact AttributeMap::contactOf(const DirectoryEntry &entry) const
{
    Contact contact;
    contact.contactId = contactIdOf(entry.dn);
    contact.type = ContactType::Remote;
    for (auto field = m_attributes.cbegin(); field != m_attributes.cend(); ++field) {
        for (const LdapAttribute &attribute : field.value()) {
            const QStringList values = attribute.valuesIn(entry);
            if (values.isEmpty())
                continue;
            fill(contact, field.key(), values.first());
            break;
        }
    }
    return contact;
}

void AttributeMap::fill(Contact &contact, const QString &field, const QString &value)
{
    if (const auto text = textField(field))
        contact.*text = value;
    else
        contact.misc.insert(withoutMisc(field), value);
}

QString AttributeMap::valueOf(const Contact &contact, const QString &field)
{
    if (field == WebServiceTerm::imAddress)
        return contact.collaborationId;
    if (const auto text = textField(field))
        return contact.*text;
    return contact.misc.value(withoutMisc(field));
}

QString AttributeMap::contactIdOf(const QString &dn)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(dn, "=,@+ '")) + ContactIds::remoteEnd;
}

QString AttributeMap::dnOf(const QString &contactId)
{
    const QString encoded =
        ContactIds::isRemote(contactId) ? contactId.chopped(ContactIds::remoteEnd.size()) : contactId;
    return QUrl::fromPercentEncoding(encoded.toUtf8());
}
