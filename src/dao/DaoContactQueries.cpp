// SPDX-License-Identifier: Apache-2.0
// The reads of DaoContact whose statements are put together at run time.
#include "src/dao/DaoContact.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/Connection.h"
#include "src/dao/ContactRow.h"
#include "src/dao/QueryText.h"

using ContactRow::selectText;

std::optional<ListContact> DaoContact::selectContacts(const QString &text)
{
    Statement statement(m_connection, text);
    Statement::Use use = statement.use();
    return readContacts(use);
}

std::optional<QList<DaoContact::StrictMatch>> DaoContact::findContactByNameStrict(const QString &firstName,
                                                                                  const QString &lastName)
{
    QString conditions;
    int count = 0;
    QueryText::addCondition(conditions, QStringLiteral("firstName"), firstName, true, count);
    QueryText::addCondition(conditions, QStringLiteral("name"), lastName, true, count);
    const QString text =
        QStringLiteral("SELECT ROWID, name, firstName, collaborationId, language, photo FROM CONTACT %1")
            .arg(conditions);
    Statement statement(m_connection, text);
    Statement::Use use = statement.use();
    QList<StrictMatch> matches;
    const bool areAll = use.eachRow([&matches](const Statement::Use &row) {
        matches.append({row.number(0), row.text(1), row.text(2), row.text(3), row.text(4), row.text(5)});
    });
    KestinLogger::debug("findContactByNameStrict :Retrieved %1 contact(s) from database. Query was%2", matches.size(),
                        text);
    if (!areAll)
        return std::nullopt;
    return matches;
}

std::optional<ListContact> DaoContact::getAllFieldsSearch(const QString &text)
{
    return selectContacts(selectText + QueryText::allFieldsCondition(text));
}

std::optional<ListContact> DaoContact::getContactsByName(const QString &name)
{
    KestinLogger::debug("DaoContact::getContactsByName [%1]", name);
    const QString pattern = QueryText::namePattern(name, QStringLiteral(" "));
    KestinLogger::debug("name after cleaning [%1]", pattern);
    Statement::Use use = m_statements.byName.use(pattern);
    return readContacts(use);
}

std::optional<ListContact> DaoContact::getContactsByLatinName(const QString &name)
{
    KestinLogger::debug("DaoContact::getContactsByLatinName [%1]", name);
    // A blank stands twice in a latin form, like any other character.
    const QString pattern = QueryText::namePattern(name, QStringLiteral("  "));
    KestinLogger::debug("DaoContact::getContactsByLatinName : name after cleaning [%1]", pattern);
    const QString prefix = QueryText::fixedPrefix(pattern);
    Statement::Use use =
        prefix.isEmpty() ? m_statements.byLatinName.use(pattern) : m_statements.byLatinPrefix.use(pattern, prefix);
    const std::optional<ListContact> contacts = readRows(use, ContactRow::readSummary);
    KestinLogger::debug("DaoContact::getContactsByLatinName : complete search query [%1]", ContactRow::latinNameText);
    return contacts;
}

void DaoContact::prepareNameSearch()
{
    m_statements.byLatinPrefix.use();
}

std::optional<ListContact> DaoContact::getContactsWithNoLatinName()
{
    KestinLogger::debug("DaoContact::getContactsWithNoLatinName");
    KestinLogger::debug("DaoContact::getContactsWithNoLatinName : complete search query [%1]",
                        ContactRow::noLatinNameText);
    Statement::Use use = m_statements.withoutLatinName.use();
    return readRows(use, ContactRow::readNames);
}

std::optional<ListContact> DaoContact::getContactToMerge(const QString &imAddress, const QString &phoneNumber,
                                                         const QString &extentionPhone)
{
    KestinLogger::debug("DaoContact::getContactToMerge : imAddress=%1 - phoneNumber=%2 - extentionPhone=%3", imAddress,
                        phoneNumber, extentionPhone);
    QString text = selectText + QLatin1String(" where ");
    bool first = true;
    const auto append = [&](const char *comparison, const QString &value) {
        if (value.isEmpty())
            return;
        if (!first)
            text += QLatin1String(" or ");
        text += QLatin1String(comparison) + QueryText::quoted(value);
        first = false;
    };
    append(" collaborationId=", imAddress);
    append(" officePhoneCan=", phoneNumber);
    append(" personalFaxCan=", extentionPhone);
    KestinLogger::debug("Final Query : %1", text);
    return selectContacts(text);
}

std::optional<ListContact> DaoContact::getContactsById(const QStringList &contactIds)
{
    KestinLogger::debug("DaoContact::getContactsById called");
    if (contactIds.isEmpty()) {
        KestinLogger::error("DaoContact::getContactsById : the list of contact IDs is empty !");
        return ListContact();
    }
    return selectContacts(selectText + QLatin1String(" WHERE contactId IN (") + QueryText::idList(contactIds));
}
