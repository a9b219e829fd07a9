// SPDX-License-Identifier: Apache-2.0
#include "src/dao/ContactRow.h"

#include <QDateTime>

const QString ContactRow::selectText =
    QStringLiteral("SELECT contactId, loginName, salutation, firstName, name, latinFirstName, latinName, language, "
                   "timezone, officePhone, attendant, colleague, assistant, email, fax, voicemail, personalHome, "
                   "personalMobile, personalFax, personalEmail, collaborationId, isPreviewed, isPrivate, type, photo, "
                   "melody, puid, officePhoneCan, faxCan, personalHomeCan, personalMobileCan, personalFaxCan, "
                   "lastModificationDate FROM CONTACT");

const QString ContactRow::summaryText =
    QStringLiteral("SELECT contactId, firstName, name, officePhone, email, type FROM (%1)");

const QString ContactRow::namesText =
    QStringLiteral("SELECT contactId, firstName, name, latinFirstName, latinName FROM (%1)");

const QString ContactRow::exportText = QStringLiteral(
    "SELECT contactId, puid, lastModificationDate, firstName, name, email, personalEmail, officePhone, "
    "personalHome, personalMobile, photo, collaborationId, personalFax, fax, assistant FROM CONTACT where "
    "type='0'");

const QString ContactRow::updateText =
    QStringLiteral("UPDATE CONTACT SET loginName=:loginName, salutation=:salutation, firstName=:firstName, name=:name, "
                   "latinFirstName=:latinFirstName, latinName=:latinName, language=:language, timezone=:timezone, "
                   "officePhone=:officePhone, officePhoneCan=:officePhoneCan, attendant=:attendant, "
                   "colleague=:colleague, assistant=:assistant, email=:email, fax=:fax, faxCan=:faxCan, "
                   "voicemail=:voicemail, personalHome=:personalHome, personalHomeCan=:personalHomeCan , "
                   "personalMobile=:personalMobile , personalMobileCan=:personalMobileCan, personalFax=:personalFax, "
                   "personalFaxCan=:personalFaxCan , personalEmail=:personalEmail, collaborationId=:collaborationId, "
                   "isPreviewed=:isPreviewed, isPrivate=:isPrivate, type=:type, photo=:photo, melody=:melody, "
                   "lastModificationDate=:lastModificationDate");

const QString ContactRow::insertText = QStringLiteral(
    "INSERT INTO CONTACT (contactId, loginName, salutation, firstName, name, latinFirstName, latinName, "
    "language, timezone, officePhone, officePhoneCan, attendant, colleague, assistant, email, fax, "
    "faxCan, voicemail, personalHome, personalHomeCan , personalMobile , personalMobileCan, "
    "personalFax,personalFaxCan , personalEmail, collaborationId, isPreviewed, isPrivate, type, photo, "
    "melody, puid, lastModificationDate) VALUES (:contactId, :loginName, :salutation, :firstName, :name, "
    ":latinFirstName, :latinName, :language, :timezone, :officePhone, :officePhoneCan, :attendant, "
    ":colleague, :assistant, :email, :fax, :faxCan, :voicemail, :personalHome, :personalHomeCan , "
    ":personalMobile , :personalMobileCan, :personalFax,:personalFaxCan , :personalEmail, "
    ":collaborationId, :isPreviewed, :isPrivate, :type, :photo, :melody, :puid, :lastModificationDate)");

namespace {

// Columns of selectText by position: the texts before and behind the flags, the type and what is stored apart.
constexpr QString Contact::*firstTexts[] = {
    &Contact::contactId,   &Contact::loginName,     &Contact::salutation,
    &Contact::firstName,   &Contact::name,          &Contact::latinFirstName,
    &Contact::latinName,   &Contact::language,      &Contact::timezone,
    &Contact::officePhone, &Contact::attendant,     &Contact::colleague,
    &Contact::assistant,   &Contact::email,         &Contact::fax,
    &Contact::voicemail,   &Contact::personalHome,  &Contact::personalMobile,
    &Contact::personalFax, &Contact::personalEmail, &Contact::collaborationId,
};
enum Column { IsPreviewed = 21, IsPrivate, Type, Photo, Melody, Puid, FirstCanonical, LastModificationDate = 32 };
constexpr QString Contact::*canonicalTexts[] = {
    &Contact::officePhoneCan,    &Contact::faxCan,         &Contact::personalHomeCan,
    &Contact::personalMobileCan, &Contact::personalFaxCan,
};
static_assert(std::size(firstTexts) == IsPreviewed);
static_assert(FirstCanonical + std::size(canonicalTexts) == LastModificationDate);

struct BoundText
{
    QString placeholder;
    QString Contact::*value;
};

QList<BoundText> boundTexts()
{
    QList<BoundText> result;
    for (const Contact::TextField &field : Contact::texts)
        result.append({QLatin1Char(':') + QLatin1String(field.name), field.value});
    return result;
}

} // namespace

void ContactRow::bind(Statement::Use &use, const Contact &contact)
{
    static const QList<BoundText> texts = boundTexts();
    for (const BoundText &text : texts)
        use.bind(text.placeholder, contact.*text.value);
    use.bind(QStringLiteral(":isPreviewed"), contact.isPreviewed)
        .bind(QStringLiteral(":isPrivate"), contact.isPrivate)
        .bind(QStringLiteral(":type"), contact.type)
        .bind(QStringLiteral(":photo"), contact.photo)
        .bind(QStringLiteral(":melody"), contact.melody);
}

Contact ContactRow::read(const Statement::Use &use)
{
    Contact contact;
    int column = 0;
    for (const auto text : firstTexts)
        contact.*text = use.text(column++);
    contact.isPreviewed = use.value(IsPreviewed).toBool();
    contact.isPrivate = use.value(IsPrivate).toBool();
    contact.type = use.value(Type).toInt();
    contact.photo = use.text(Photo);
    contact.melody = use.text(Melody);
    contact.setPUID(use.text(Puid));
    column = FirstCanonical;
    for (const auto text : canonicalTexts)
        contact.*text = use.text(column++);
    contact.setLastModificationDate(use.value(LastModificationDate).toDateTime());
    return contact;
}

Contact ContactRow::readSummary(const Statement::Use &use)
{
    Contact contact;
    contact.contactId = use.text(0);
    contact.firstName = use.text(1);
    contact.name = use.text(2);
    contact.officePhone = use.text(3);
    contact.email = use.text(4);
    contact.type = use.value(5).toInt();
    return contact;
}

Contact ContactRow::readNames(const Statement::Use &use)
{
    Contact contact;
    contact.contactId = use.text(0);
    contact.firstName = use.text(1);
    contact.name = use.text(2);
    contact.latinFirstName = use.text(3);
    contact.latinName = use.text(4);
    return contact;
}

Contact ContactRow::readExported(const Statement::Use &use)
{
    constexpr QString Contact::*texts[] = {
        &Contact::firstName,      &Contact::name,        &Contact::email,
        &Contact::personalEmail,  &Contact::officePhone, &Contact::personalHome,
        &Contact::personalMobile, &Contact::photo,       &Contact::collaborationId,
        &Contact::personalFax,    &Contact::fax,         &Contact::assistant,
    };
    Contact contact;
    contact.contactId = use.text(0);
    contact.setPUID(use.text(1));
    contact.setLastModificationDate(use.value(2).toDateTime());
    int column = 3;
    for (const auto text : texts)
        contact.*text = use.text(column++);
    return contact;
}
