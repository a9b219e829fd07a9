// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/VCardWriter.h"

#include "client/photo/PictureFile.h"
#include "client/vcard/AddressPlacement.h"
#include "client/vcard/MiscPairs.h"
#include "client/vcard/OwnProperties.h"
#include "client/vcard/VCardReader.h"

#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace {

/// Octets of a line without its end; the blank at the beginning of a folded one counts.
constexpr qsizetype longestLine = 75;
/// Of pairs the first of which is a field.
constexpr int secondPlace = 2;
constexpr char end[] = "END:VCARD\r\n";

QByteArray escaped(const QString &text)
{
    QString result = text;
    result.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
        .replace(QLatin1Char(','), QLatin1String("\\,"))
        .replace(QLatin1Char(';'), QLatin1String("\\;"))
        .replace(QLatin1String("\r\n"), QLatin1String("\\n"))
        .replace(QLatin1Char('\n'), QLatin1String("\\n"))
        .remove(QLatin1Char('\r'));
    return result.toUtf8();
}

/// Where a line may be broken so that no character is taken apart.
qsizetype breakBefore(const QByteArray &line, qsizetype place)
{
    while ((uchar(line.at(place)) & 0xc0) == 0x80)
        --place;
    return place;
}

QByteArray imUri(const QString &address)
{
    static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*:"));
    return (scheme.match(address).hasMatch() ? QByteArray() : QByteArrayLiteral("im:")) + escaped(address);
}

} // namespace

VCardWriter::VCardWriter(const Contact &contact)
    : m_contact(contact)
    , m_text("BEGIN:VCARD\r\nVERSION:3.0\r\n")
{
}

QByteArray VCardWriter::write(const Contact &contact, const QByteArray &picture)
{
    VCardWriter writer(contact);
    writer.addPerson();
    writer.addAddresses();
    writer.addPlace();
    writer.addMisc();
    writer.addOwn();
    writer.addPhoto(picture);
    return writer.m_text + end;
}

void VCardWriter::addPerson()
{
    addLine("N:" + escaped(m_contact.name) + ';' + escaped(m_contact.firstName) + ";;" + escaped(m_contact.salutation) +
            ';' + escaped(misc("suffix")));
    addLine("FN:" + escaped(m_contact.displayName()));
    add("NICKNAME", {misc("nickname")});
    add("ORG", {misc("company"), misc("department")});
    add("TITLE", {misc("job")});
    add("ROLE", {misc("role")});
    add("UID", {misc("uid")});
    if (m_contact.isPrivate)
        addLine("CLASS:PRIVATE");
}

void VCardWriter::addAddresses()
{
    add("TEL;TYPE=WORK,VOICE", {m_contact.officePhone});
    add("TEL;TYPE=CELL,VOICE", {m_contact.personalMobile});
    add("TEL;TYPE=HOME,VOICE", {m_contact.personalHome});
    add("TEL;TYPE=FAX", {m_contact.fax});
    add("TEL;TYPE=WORK,X-EXTENSION", {m_contact.personalFax});
    add("EMAIL;TYPE=INTERNET,WORK", {m_contact.email});
    for (const QString &number : MiscPairs::values(m_contact, QStringLiteral("phone"), secondPlace))
        add("TEL;TYPE=VOICE", {number});
    add("EMAIL;TYPE=INTERNET,HOME", {m_contact.personalEmail});
    for (const QString &address : MiscPairs::values(m_contact, QStringLiteral("email")))
        add("EMAIL;TYPE=INTERNET", {address});
    for (const QString &address :
         QStringList(m_contact.collaborationId) + MiscPairs::values(m_contact, QStringLiteral("im"))) {
        if (!address.isEmpty())
            addLine("IMPP:" + imUri(address));
    }
}

void VCardWriter::addPlace()
{
    const auto house = [this](const char *const(&keys)[5]) {
        return QStringList{{}, {}, misc(keys[0]), misc(keys[1]), misc(keys[2]), misc(keys[3]), misc(keys[4])};
    };
    add("ADR;TYPE=WORK", house(workHouse));
    add("ADR;TYPE=HOME", house(homeHouse));
    add("GEO", misc("geo").split(QLatin1Char(';')));
    add("TZ;VALUE=text", {m_contact.timezone});
}

void VCardWriter::addMisc()
{
    static const QRegularExpression date(QStringLiteral("^(\\d{4}|--)-?\\d{2}-?\\d{2}$"));
    add("NOTE", {misc("note")});
    add("URL", {misc("url")});
    add(date.match(misc("birthday")).hasMatch() ? "BDAY" : "BDAY;VALUE=text", {misc("birthday")});
    add("X-ANNIVERSARY", {misc("anniversary")});
    add("GENDER", misc("gender").split(QLatin1Char(';')));
    QByteArrayList categories;
    for (const QString &category : misc("categories").split(QLatin1String(", "), Qt::SkipEmptyParts))
        categories.append(escaped(category));
    if (!categories.isEmpty())
        addLine("CATEGORIES:" + categories.join(','));
}

void VCardWriter::addPhoto(const QByteArray &picture)
{
    const bool isPath = m_contact.photo.startsWith(QLatin1Char('/'));
    const std::optional<ImageHeader> header = ImageHeader::of(picture);
    if (header)
        addLine("PHOTO;ENCODING=b;TYPE=" + header->format + ':' + picture.toBase64());
    else
        add("PHOTO;VALUE=uri",
            {isPath ? QUrl::fromLocalFile(m_contact.photo).toString(QUrl::FullyEncoded) : m_contact.photo});
}

void VCardWriter::addOwn()
{
    const Contact understood = VCardReader::read(m_text + end).contact;
    for (const auto &[name, value] : OwnProperties::between(m_contact, understood))
        addLine(name + ':' + value);
}

void VCardWriter::add(const QByteArray &property, const QStringList &parts)
{
    if (std::all_of(parts.begin(), parts.end(), [](const QString &part) { return part.isEmpty(); }))
        return;
    QByteArrayList values;
    for (const QString &part : parts)
        values.append(escaped(part));
    addLine(property + ':' + values.join(';'));
}

void VCardWriter::addLine(const QByteArray &line)
{
    qsizetype from = 0;
    qsizetype room = longestLine;
    while (line.size() - from > room) {
        const qsizetype next = breakBefore(line, from + room);
        m_text += line.mid(from, next - from) + "\r\n ";
        from = next;
        room = longestLine - 1;
    }
    m_text += line.mid(from) + "\r\n";
}
