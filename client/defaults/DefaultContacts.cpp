// SPDX-License-Identifier: Apache-2.0
#include "client/defaults/DefaultContacts.h"

#include "client/bus/CommandFailure.h"
#include "client/text/ContactText.h"
#include "client/vcard/VCardReader.h"
#include "client/vcard/VCardSplitter.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr qsizetype shortForm = 8;
constexpr qsizetype longForm = 20;

using Fields = QList<std::pair<QString, QString>>;

/// (name, value) of the fields of a record in their order.
Fields fieldsOf(const Contact &contact)
{
    Fields fields{
        {QStringLiteral("contactId"), contact.contactId},
        {QStringLiteral("salutation"), contact.salutation},
        {QStringLiteral("firstName"), contact.firstName},
        {QStringLiteral("name"), contact.name},
        {QStringLiteral("officePhone"), contact.officePhone},
        {QStringLiteral("isPreviewed"), contact.isPreviewed ? QStringLiteral("1") : QStringLiteral("0")},
        {QStringLiteral("email"), contact.email},
        {QStringLiteral("photo"), contact.photo},
        {QStringLiteral("fax"), contact.fax},
        {QStringLiteral("personalMobile"), contact.personalMobile},
        {QStringLiteral("personalHome"), contact.personalHome},
        {QStringLiteral("personalEmail"), contact.personalEmail},
        {QStringLiteral("personalFax"), contact.personalFax},
        {QStringLiteral("collaborationId"), contact.collaborationId},
    };
    for (const char *key : {"company", "job", "address", "city", "zip", "country"})
        fields.append({QLatin1String("misc.") + QLatin1String(key), contact.misc.value(QLatin1String(key))});
    return fields;
}

/// Why the form cannot carry the text, as a sentence's end, when it cannot.
std::optional<QString> faultOf(const QString &text)
{
    for (const char *word : {"escSharp", "escComa"}) {
        if (text.contains(QLatin1String(word)))
            return QStringLiteral("holds the word %1, which the directory takes for a mark of its own")
                .arg(QLatin1String(word));
    }
    if (text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r')))
        return QStringLiteral("holds a line break");
    if (text.endsWith(QLatin1Char('\\')))
        return QStringLiteral("ends with a backslash, which would join it with what follows");
    return std::nullopt;
}

CommandFailure refusal(const QString &what, const QString &fault)
{
    return {ExitCode::Refused,
            QStringLiteral("%1 %2; nothing is changed, as the default contacts cannot hold that").arg(what, fault)};
}

QString escaped(QString field)
{
    return field.replace(QLatin1Char('#'), QLatin1String("\\#")).replace(QLatin1Char(','), QLatin1String("\\,"));
}

QString recordOf(const Contact &contact)
{
    Fields fields = fieldsOf(contact);
    QStringList values;
    for (const auto &[name, value] : fields) {
        if (const auto fault = faultOf(value))
            throw refusal(QStringLiteral("%1: %2").arg(contact.displayName(), name), *fault);
        values.append(escaped(value));
    }
    const bool isShort =
        std::all_of(values.begin() + shortForm, values.end(), [](const QString &value) { return value.isEmpty(); });
    return values.mid(0, isShort ? shortForm : longForm).join(QLatin1Char(','));
}

QStringList leftOutOf(const Contact &contact)
{
    QStringList carried{QStringLiteral("type")};
    for (const auto &[name, value] : fieldsOf(contact))
        carried.append(name);
    QStringList leftOut;
    for (const auto &[name, value] : ContactText::setFields(contact)) {
        if (!carried.contains(name))
            leftOut.append(QStringLiteral("%1: %2").arg(contact.displayName(), name));
    }
    return leftOut;
}

/// Separators that no backslash stands before.
QStringList splitAt(QChar separator, const QString &text)
{
    return text.split(QRegularExpression(QStringLiteral("(?<!\\\\)%1").arg(separator)));
}

void checkRecord(const QString &record)
{
    const QStringList fields = splitAt(QLatin1Char(','), record);
    const QString what = QStringLiteral("the record \"%1\"").arg(record);
    if (fields.size() != shortForm && fields.size() != longForm)
        throw refusal(
            what, QStringLiteral("has %1 fields instead of %2 or %3").arg(fields.size()).arg(shortForm).arg(longForm));
    if (const auto fault = faultOf(record))
        throw refusal(what, *fault);
}

} // namespace

DefaultContacts DefaultContacts::of(const ListContact &contacts)
{
    DefaultContacts result;
    QStringList records;
    for (Contact contact : contacts) {
        contact.contactId = QString::number(++result.count);
        records.append(recordOf(contact));
        result.leftOut += leftOutOf(contact);
    }
    result.value = records.join(QLatin1Char('#'));
    return result;
}

DefaultContacts DefaultContacts::ofCards(QIODevice &device, const QString &file)
{
    ListContact contacts;
    QStringList pictures;
    VCardSplitter splitter(device);
    while (const std::optional<RawCard> card = splitter.next()) {
        const VCardReader::Result result =
            card->fault ? VCardReader::refused(*card->fault) : VCardReader::read(card->text);
        if (result.refusal)
            throw refusal(QStringLiteral("%1: card %2").arg(file, QString::number(card->number)), *result.refusal);
        if (!result.picture.isEmpty())
            pictures.append(result.contact.displayName() + QLatin1String(": the embedded photo"));
        contacts.append(result.contact);
    }
    if (contacts.isEmpty())
        throw CommandFailure(ExitCode::FileError, QStringLiteral("%1 holds no vCard").arg(file));
    DefaultContacts result = of(contacts);
    result.leftOut += pictures;
    return result;
}

DefaultContacts DefaultContacts::ofText(const QString &text)
{
    DefaultContacts result;
    QStringList records;
    for (const QString &line : text.split(QRegularExpression(QStringLiteral("\r?\n")), Qt::SkipEmptyParts))
        records += splitAt(QLatin1Char('#'), line);
    for (const QString &record : std::as_const(records))
        checkRecord(record);
    result.count = int(records.size());
    result.value = records.join(QLatin1Char('#'));
    return result;
}
