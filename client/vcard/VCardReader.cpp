// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/VCardReader.h"

#include "client/vcard/AddressPlacement.h"
#include "client/vcard/MiscPairs.h"
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
        {QStringLiteral("X-ANNIVERSARY"), QStringLiteral("anniversary")},
        {QStringLiteral("GENDER"), QStringLiteral("gender")},
        {QStringLiteral("UID"), QStringLiteral("uid")},
    };
    return keys;
}

/// The list of properties that are given their places together; none for other properties.
QString listOf(const VCardProperty &property)
{
    static const QHash<QString, QString> lists{
        {QStringLiteral("TEL"), QStringLiteral("TEL")},       {QStringLiteral("EMAIL"), QStringLiteral("EMAIL")},
        {QStringLiteral("ADR"), QStringLiteral("ADR")},       {QStringLiteral("IMPP"), QStringLiteral("IMPP")},
        {QStringLiteral("X-JABBER"), QStringLiteral("IMPP")}, {QStringLiteral("X-SIP"), QStringLiteral("IMPP")},
    };
    const QString list = lists.value(property.name);
    // A telephone that is no number is an address to call.
    const bool isAddress = list == QLatin1String("TEL") && property.text().contains(QLatin1Char('@'));
    return isAddress ? QStringLiteral("IMPP") : list;
}

/// What is about the card and not about the person, or is made anew.
bool isOfCard(const QString &name)
{
    static const QSet<QString> names{QStringLiteral("BEGIN"),      QStringLiteral("END"), QStringLiteral("VERSION"),
                                     QStringLiteral("PRODID"),     QStringLiteral("REV"), QStringLiteral("PROFILE"),
                                     QStringLiteral("SORT-STRING")};
    return names.contains(name);
}

/// Version 4.0 writes "geo:48.1,2.3".
QString geoOf(const VCardProperty &property)
{
    static const QRegularExpression uri(QStringLiteral("^geo:([^,;]+),([^,;]+).*$"),
                                        QRegularExpression::CaseInsensitiveOption);
    return property.text().replace(uri, QStringLiteral("\\1;\\2"));
}

/// Of a web address some escape the colon.
QString urlOf(const VCardProperty &property)
{
    return property.text().replace(QLatin1String("\\:"), QLatin1String(":"));
}

bool isKind(const QString &name)
{
    static const QSet<QString> names{QStringLiteral("KIND"), QStringLiteral("X-ADDRESSBOOKSERVER-KIND"),
                                     QStringLiteral("X-ABSHOWAS")};
    return names.contains(name);
}

/// The first that is not empty wins; a card may name a thing twice. False when another one was there.
bool fill(QString &field, const QString &value)
{
    if (field.isEmpty())
        field = value;
    return field == value;
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
        return QStringLiteral("holds a NUL character");
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
    const QStringList unreachable = reader.place();
    reader.completeName();
    const bool nameless = reader.m_contact.firstName.isEmpty() && reader.m_contact.name.isEmpty();
    // After that, as a contact that was exported may really have none.
    for (const VCardProperty &property : std::as_const(reader.m_own))
        OwnProperties::apply(property, reader.m_contact);
    return {reader.m_contact, reader.m_picture, unreachable, reader.m_leftOut,
            nameless ? std::optional(QStringLiteral("holds no name")) : std::nullopt};
}

/// Answers the numbers by which no caller is recognised.
QStringList VCardReader::place()
{
    AddressPlacement addresses(m_contact);
    addresses.placeEmails(m_lists.value(QStringLiteral("EMAIL")));
    addresses.placeMessaging(m_lists.value(QStringLiteral("IMPP")));
    addresses.placeHouses(m_lists.value(QStringLiteral("ADR")));
    NumberPlacement numbers(m_contact);
    numbers.place(m_lists.value(QStringLiteral("TEL")));
    return numbers.unreachable();
}

void VCardReader::take(const VCardProperty &property)
{
    const QString &name = property.name;
    if (const QString list = listOf(property); !list.isEmpty())
        m_lists[list].append(property);
    else if (OwnProperties::isOwn(name))
        m_own.append(property);
    else if (name == QLatin1String("N"))
        takeName(property);
    else if (name == QLatin1String("FN"))
        fill(m_fullName, property.text().simplified());
    else if (name == QLatin1String("ORG"))
        takeOrganisation(property);
    else if (name == QLatin1String("PHOTO"))
        takePhoto(property);
    else if (isKind(name))
        takeKind(property.part(0).toLower());
    else if (!takeDetail(property) && !isOfCard(name))
        leaveOut(name);
}

/// False when the contact has no place for it.
bool VCardReader::takeDetail(const VCardProperty &property)
{
    const QString &name = property.name;
    if (name == QLatin1String("LANG"))
        return fill(m_contact.language, property.part(0));
    if (name == QLatin1String("TZ"))
        return fill(m_contact.timezone, property.part(0));
    if (name == QLatin1String("CLASS"))
        m_contact.isPrivate = property.part(0).compare(QLatin1String("PRIVATE"), Qt::CaseInsensitive) == 0;
    else if (name == QLatin1String("CATEGORIES"))
        addMisc(QStringLiteral("categories"), property.values.join(QLatin1String(", ")));
    else if (name == QLatin1String("GEO"))
        addMisc(QStringLiteral("geo"), geoOf(property));
    else if (name == QLatin1String("URL"))
        addMisc(QStringLiteral("url"), urlOf(property));
    else if (miscKeys().contains(name))
        addMisc(miscKeys().value(name), property.text());
    else
        return false;
    return true;
}

void VCardReader::leaveOut(const QString &name)
{
    constexpr qsizetype mostNames = 100;
    constexpr qsizetype longestName = 64;
    const QString shown = name.left(longestName);
    const bool isRoom = m_leftOut.size() < mostNames || m_leftOut.contains(shown);
    ++m_leftOut[isRoom ? shown : QStringLiteral("others")];
}

void VCardReader::takeKind(const QString &kind)
{
    m_isGroup = m_isGroup || kind == QLatin1String("group");
    m_saysCompany = m_saysCompany || kind == QLatin1String("org") || kind == QLatin1String("company");
}

/// Each part of a name may be a list of names.
void VCardReader::takeName(const VCardProperty &property)
{
    const auto names = [&property](qsizetype index) {
        static const QRegularExpression separator(
            QStringLiteral(",(?=\\S)")); // a comma of a name has a blank behind it
        return property.part(index).replace(separator, QStringLiteral(" "));
    };
    fill(m_contact.name, names(0));
    fill(m_contact.firstName, joined({names(1), names(2)}, QStringLiteral(" ")));
    fill(m_contact.salutation, names(3));
    addMisc(QStringLiteral("suffix"), names(4));
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
    const QByteArray picture =
        embedded.hasMatch() ? QByteArray::fromBase64(address.mid(embedded.capturedEnd()).toLatin1()) : property.bytes;
    const bool isAddress = webAddress.match(address).hasMatch();
    if (isAddress ? !fill(m_contact.photo, address) : picture.isEmpty() || !m_picture.isEmpty())
        leaveOut(property.name);
    else if (!isAddress)
        m_picture = picture;
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

void VCardReader::addMisc(const QString &kind, const QString &value)
{
    MiscPairs::add(m_contact, kind, value);
}
