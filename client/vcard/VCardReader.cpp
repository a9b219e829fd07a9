// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/VCardReader.h"

#include "client/vcard/NumberPlacement.h"
#include "client/vcard/OwnProperties.h"
#include "client/vcard/VCardParser.h"

#include <QHash>
#include <QRegularExpression>

namespace {

/// Properties that become a misc pair as they are.
const QHash<QString, QString> &miscKeys()
{
    static const QHash<QString, QString> keys{
        {QStringLiteral("TITLE"), QStringLiteral("job")},
        {QStringLiteral("ROLE"), QStringLiteral("role")},
        {QStringLiteral("NOTE"), QStringLiteral("note")},
        {QStringLiteral("BDAY"), QStringLiteral("birthday")},
        {QStringLiteral("ANNIVERSARY"), QStringLiteral("anniversary")},
        {QStringLiteral("NICKNAME"), QStringLiteral("nickname")},
        {QStringLiteral("GEO"), QStringLiteral("geo")},
        {QStringLiteral("GENDER"), QStringLiteral("gender")},
        {QStringLiteral("UID"), QStringLiteral("uid")},
    };
    return keys;
}

bool isInstantMessaging(const QString &name)
{
    // A telephone that is no number is an address to call.
    static const QSet<QString> names{QStringLiteral("IMPP"), QStringLiteral("X-JABBER"), QStringLiteral("X-SIP"),
                                     QStringLiteral("TEL")};
    return names.contains(name);
}

bool isKind(const QString &name)
{
    static const QSet<QString> names{QStringLiteral("KIND"), QStringLiteral("X-ADDRESSBOOKSERVER-KIND"),
                                     QStringLiteral("X-ABSHOWAS")};
    return names.contains(name);
}

/// The first that is not empty wins; a card may name a thing twice.
void fill(QString &field, const QString &value)
{
    if (field.isEmpty())
        field = value;
}

QString joined(const QStringList &parts, const QString &separator)
{
    QStringList filled;
    for (const QString &part : parts) {
        if (!part.isEmpty())
            filled.append(part);
    }
    return filled.join(separator);
}

std::optional<QString> faultOf(const QByteArray &card)
{
    if (card.contains('\0'))
        return QStringLiteral("holds a NUL character; is the file UTF-16 without its mark");
    static const QRegularExpression version21(QStringLiteral("^VERSION:\\s*2\\.1\\s*$"),
                                              QRegularExpression::MultilineOption |
                                                  QRegularExpression::CaseInsensitiveOption);
    if (!VCardCharset::isUtf8(card) && !version21.match(QString::fromLatin1(card)).hasMatch())
        return QStringLiteral("is not valid UTF-8, which its version demands");
    return std::nullopt;
}

} // namespace

VCardReader::Result VCardReader::refused(const QString &reason)
{
    Result result;
    result.refusal = reason;
    return result;
}

VCardReader::Result VCardReader::read(const QByteArray &card)
{
    if (const auto fault = faultOf(card))
        return refused(*fault);
    VCardReader reader;
    for (const VCardProperty &property :
         VCardParser::parse(VCardCharset::isUtf8(card) ? card : VCardCharset::toUtf8(card)))
        reader.take(property);
    if (reader.m_isGroup)
        return refused(QStringLiteral("is a group of contacts"));
    NumberPlacement numbers(reader.m_contact);
    numbers.place(reader.m_telephones);
    reader.completeName();
    const bool nameless = reader.m_contact.firstName.isEmpty() && reader.m_contact.name.isEmpty();
    // After that, as a contact that was exported may really have none.
    for (const VCardProperty &property : std::as_const(reader.m_own))
        OwnProperties::apply(property, reader.m_contact);
    return {reader.m_contact, reader.m_picture, numbers.unreachable(),
            nameless ? std::optional(QStringLiteral("holds no name")) : std::nullopt};
}

void VCardReader::take(const VCardProperty &property)
{
    const QString &name = property.name;
    if (name == QLatin1String("N"))
        takeName(property);
    else if (name == QLatin1String("FN"))
        fill(m_fullName, property.text().simplified());
    else if (name == QLatin1String("TEL") && !property.text().contains(QLatin1Char('@')))
        m_telephones.append(property);
    else if (name == QLatin1String("EMAIL"))
        takeEmail(property);
    else if (isInstantMessaging(name))
        takeInstantMessaging(property);
    else if (name == QLatin1String("ADR"))
        takeAddress(property);
    else if (name == QLatin1String("ORG"))
        takeOrganisation(property);
    else if (name == QLatin1String("PHOTO"))
        takePhoto(property);
    else if (name == QLatin1String("LANG"))
        fill(m_contact.language, property.part(0));
    else if (name == QLatin1String("TZ"))
        fill(m_contact.timezone, property.part(0));
    else if (name == QLatin1String("CLASS"))
        m_contact.isPrivate = property.part(0).compare(QLatin1String("PRIVATE"), Qt::CaseInsensitive) == 0;
    else if (isKind(name))
        takeKind(property.part(0).toLower());
    else if (name == QLatin1String("CATEGORIES"))
        addMisc(QStringLiteral("categories"), property.values.join(QLatin1String(", ")));
    else if (name == QLatin1String("URL")) // some escape the colon
        addMisc(QStringLiteral("url"), property.text().replace(QLatin1String("\\:"), QLatin1String(":")));
    else if (OwnProperties::isOwn(name))
        m_own.append(property);
    else if (miscKeys().contains(name))
        addMisc(miscKeys().value(name), property.text());
}

void VCardReader::takeKind(const QString &kind)
{
    m_isGroup = m_isGroup || kind == QLatin1String("group");
    m_saysCompany = m_saysCompany || kind == QLatin1String("org") || kind == QLatin1String("company");
}

void VCardReader::takeName(const VCardProperty &property)
{
    fill(m_contact.name, property.part(0));
    fill(m_contact.firstName, joined({property.part(1), property.part(2)}, QStringLiteral(" ")));
    fill(m_contact.salutation, property.part(3));
    addMisc(QStringLiteral("suffix"), property.part(4));
}

void VCardReader::takeEmail(const VCardProperty &property)
{
    const QString address = property.part(0);
    if (address == m_contact.email || address == m_contact.personalEmail)
        return;
    const bool isPersonal = property.is("home") || (!property.is("work") && !m_contact.email.isEmpty());
    QString &field = isPersonal ? m_contact.personalEmail : m_contact.email;
    if (field.isEmpty())
        field = address;
    else
        addMisc(QStringLiteral("email"), address);
}

void VCardReader::takeInstantMessaging(const VCardProperty &property)
{
    static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*:"));
    const QString address = property.part(0).remove(scheme);
    if (m_contact.collaborationId.isEmpty())
        m_contact.collaborationId = address;
    else if (m_contact.collaborationId != address)
        addMisc(QStringLiteral("im"), address);
}

void VCardReader::takeAddress(const VCardProperty &property)
{
    // Post-office box, what is added to the street, street, city, region, code, country.
    const QString street = joined({property.part(2), property.part(1), property.part(0)}, QStringLiteral(", "));
    const QList<std::pair<QString, QString>> parts{{QStringLiteral("address"), street},
                                                   {QStringLiteral("city"), property.part(3)},
                                                   {QStringLiteral("region"), property.part(4)},
                                                   {QStringLiteral("zip"), property.part(5)},
                                                   {QStringLiteral("country"), property.part(6)}};
    const bool isFirst = std::none_of(parts.begin(), parts.end(),
                                      [this](const auto &part) { return m_contact.misc.contains(part.first); });
    QStringList values;
    for (const auto &[key, value] : parts) {
        values.append(value);
        if (isFirst)
            addMisc(key, value);
    }
    if (!isFirst)
        addMisc(QStringLiteral("otherAddress"), joined(values, QStringLiteral(", ")));
}

void VCardReader::takeOrganisation(const VCardProperty &property)
{
    addMisc(QStringLiteral("company"), property.part(0));
    QStringList units;
    for (qsizetype index = 1; index < property.values.size(); ++index)
        units.append(property.part(index));
    addMisc(QStringLiteral("department"), joined(units, QStringLiteral(", ")));
}

void VCardReader::takePhoto(const VCardProperty &property)
{
    static const QRegularExpression webAddress(QStringLiteral("^https?://"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression data(QStringLiteral("^data:[^,]*;base64,"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QString address = property.text();
    const QRegularExpressionMatch embedded = data.match(address);
    if (webAddress.match(address).hasMatch())
        fill(m_contact.photo, address);
    else if (m_picture.isEmpty())
        m_picture = embedded.hasMatch() ? QByteArray::fromBase64(address.mid(embedded.capturedEnd()).toLatin1())
                                        : property.bytes;
}

/// Whether the card is that of a company, as a company says or as one writes the name of a department.
bool VCardReader::isCompany() const
{
    const QString company = m_contact.misc.value(QStringLiteral("company"));
    const bool hasName = !m_contact.firstName.isEmpty() || !m_contact.name.isEmpty();
    if (m_saysCompany || hasName || company.isEmpty() || !m_fullName.startsWith(company, Qt::CaseInsensitive))
        return m_saysCompany;
    return m_fullName.size() == company.size() || !m_fullName.at(company.size()).isLetterOrNumber();
}

void VCardReader::completeName()
{
    if (isCompany())
        return takeCompanyName();
    if (m_contact.firstName.isEmpty() && m_contact.name.isEmpty() && !m_fullName.isEmpty()) {
        const PersonName name = PersonName::of(m_fullName);
        m_contact.firstName = name.first;
        m_contact.name = name.last;
        fill(m_contact.salutation, name.prefix);
        addMisc(QStringLiteral("suffix"), name.suffix);
    }
    if (m_contact.name.isEmpty()) // people are searched by the last name
        std::swap(m_contact.firstName, m_contact.name);
    for (const QString &candidate :
         {m_contact.misc.value(QStringLiteral("company")), m_contact.misc.value(QStringLiteral("nickname")),
          m_contact.email, m_contact.personalEmail})
        fill(m_contact.name, candidate);
}

/// A person whom the card names beside the company is not lost.
void VCardReader::takeCompanyName()
{
    const QString person = joined({m_contact.firstName, m_contact.name}, QStringLiteral(" "));
    QString company = m_fullName;
    fill(company, m_contact.misc.value(QStringLiteral("company")));
    fill(company, person);
    m_contact.firstName.clear();
    m_contact.name = company;
    if (person != company)
        addMisc(QStringLiteral("person"), person);
}

/// The first of a kind has the plain key, the next ones a number behind it.
void VCardReader::addMisc(const QString &key, const QString &value)
{
    if (value.isEmpty())
        return;
    QString freeKey = key;
    for (int count = 2; m_contact.misc.contains(freeKey); ++count)
        freeKey = key + QString::number(count);
    m_contact.misc.insert(freeKey, value);
}
