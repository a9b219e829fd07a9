// SPDX-License-Identifier: Apache-2.0
#include "src/dao/ContactRow.h"

#include <QDateTime>
#include <QList>
#include <QRegularExpression>

#include <algorithm>

const QString ContactRow::selectText =
    QStringLiteral("SELECT contactId, loginName, salutation, firstName, name, latinFirstName, latinName, language, "
                   "timezone, officePhone, attendant, colleague, assistant, email, fax, voicemail, personalHome, "
                   "personalMobile, personalFax, personalEmail, collaborationId, isPreviewed, isPrivate, type, photo, "
                   "melody, puid, officePhoneCan, faxCan, personalHomeCan, personalMobileCan, personalFaxCan, "
                   "lastModificationDate FROM CONTACT");

const QString ContactRow::latinNameText = selectText + QLatin1String(" where latinName like :name");
const QString ContactRow::noLatinNameText = selectText + QLatin1String(" where latinName=''");

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

/// A column of CONTACT and the field of the record that it holds.
struct Column
{
    enum class Kind { Text, Flag, Type, PersistentId, ModificationDate };

    QLatin1String name;
    Kind kind = Kind::Text;
    QString Contact::*text = nullptr;
    bool Contact::*flag = nullptr;
};

QList<Column> allColumns()
{
    QList<Column> columns{
        {QLatin1String("photo"), Column::Kind::Text, &Contact::photo},
        {QLatin1String("melody"), Column::Kind::Text, &Contact::melody},
        {QLatin1String("isPreviewed"), Column::Kind::Flag, nullptr, &Contact::isPreviewed},
        {QLatin1String("isPrivate"), Column::Kind::Flag, nullptr, &Contact::isPrivate},
        {QLatin1String("type"), Column::Kind::Type},
        {QLatin1String("puid"), Column::Kind::PersistentId},
        {QLatin1String("lastModificationDate"), Column::Kind::ModificationDate},
    };
    for (const Contact::TextField &field : Contact::texts)
        columns.append({QLatin1String(field.name), Column::Kind::Text, field.value});
    return columns;
}

using Columns = QList<Column>;

/// The columns whose names `name` finds in a statement, each once, in their order there: their positions.
Columns columnsIn(const QString &statement, const QRegularExpression &name)
{
    Columns all = allColumns();
    Columns found;
    for (auto match = name.globalMatch(statement); match.hasNext();) {
        const QString wanted = match.next().captured(1);
        const auto isWanted = [&wanted](const Column &column) { return column.name == wanted; };
        const auto column = std::find_if(all.begin(), all.end(), isWanted);
        if (column == all.end())
            continue; // met before
        found.append(*column);
        all.erase(column);
    }
    return found;
}

Columns columnsOfRows(const QString &statement)
{
    const QString list = statement.first(statement.indexOf(QLatin1String(" FROM ")));
    return columnsIn(list, QRegularExpression(QStringLiteral("(\\w+)(?:,|$)")));
}

Columns columnsOfParameters(const QString &statement)
{
    return columnsIn(statement, QRegularExpression(QStringLiteral(":(\\w+)")));
}

void bindColumn(Statement::Use &use, const Column &column, const Contact &contact)
{
    switch (column.kind) {
    case Column::Kind::Text:
        use.bind(contact.*column.text);
        break;
    case Column::Kind::Flag:
        use.bind(contact.*column.flag);
        break;
    case Column::Kind::Type:
        use.bind(contact.type);
        break;
    case Column::Kind::PersistentId:
        use.bind(contact.getPUID());
        break;
    case Column::Kind::ModificationDate:
        use.bind(contact.getLastModificationDate());
        break;
    }
}

void readColumn(const Statement::Use &row, int position, const Column &column, Contact &contact)
{
    switch (column.kind) {
    case Column::Kind::Text:
        contact.*column.text = row.text(position);
        break;
    case Column::Kind::Flag:
        contact.*column.flag = row.flag(position);
        break;
    case Column::Kind::Type:
        contact.type = qint32(row.number(position));
        break;
    case Column::Kind::PersistentId:
        contact.setPUID(row.text(position));
        break;
    case Column::Kind::ModificationDate:
        contact.setLastModificationDate(row.time(position));
        break;
    }
}

void bindAll(Statement::Use &use, const Columns &columns, const Contact &contact)
{
    for (const Column &column : columns)
        bindColumn(use, column, contact);
}

Contact readAll(const Statement::Use &row, const Columns &columns)
{
    Contact contact;
    for (int position = 0; position < columns.size(); ++position)
        readColumn(row, position, columns.at(position), contact);
    return contact;
}

} // namespace

void ContactRow::bindInsert(Statement::Use &use, const Contact &contact)
{
    static const Columns columns = columnsOfParameters(insertText);
    bindAll(use, columns, contact);
}

void ContactRow::bindUpdate(Statement::Use &use, const Contact &contact)
{
    static const Columns columns = columnsOfParameters(updateText);
    bindAll(use, columns, contact);
}

Contact ContactRow::read(const Statement::Use &row)
{
    static const Columns columns = columnsOfRows(selectText);
    return readAll(row, columns);
}

Contact ContactRow::readSummary(const Statement::Use &row)
{
    static const Columns columns = columnsOfRows(summaryText);
    return readAll(row, columns);
}

Contact ContactRow::readNames(const Statement::Use &row)
{
    static const Columns columns = columnsOfRows(namesText);
    return readAll(row, columns);
}

Contact ContactRow::readExported(const Statement::Use &row)
{
    static const Columns columns = columnsOfRows(exportText);
    return readAll(row, columns);
}
