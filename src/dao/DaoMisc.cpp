// SPDX-License-Identifier: Apache-2.0
#include "src/dao/DaoMisc.h"

#include "src/dao/QueryText.h"

namespace {
const QString idPlaceholder = QStringLiteral(":contactId");
const QString keyPlaceholder = QStringLiteral(":keyName");
const QString valuePlaceholder = QStringLiteral(":value");
} // namespace

DaoMisc::DaoMisc(const QSqlDatabase &handle)
    : m_handle(handle)
    , m_insert(handle,
               QStringLiteral("INSERT INTO MISC(contactId, keyName, value) VALUES (:contactId,:keyName,:value)"))
    , m_update(handle, QStringLiteral("UPDATE MISC SET value=:value WHERE contactId=:contactId AND keyName=:keyName"))
    , m_delete(handle, QStringLiteral("DELETE FROM MISC WHERE contactId=:contactId AND keyName=:keyName"))
    , m_deleteAll(handle, QStringLiteral("DELETE FROM MISC WHERE contactId=:contactId"))
    , m_selectValue(handle, QStringLiteral("SELECT value FROM MISC WHERE contactId=:contactId AND keyName=:keyName"))
    , m_selectPairs(handle, QStringLiteral("SELECT keyName, value FROM MISC WHERE contactId=:contactId"))
{
}

int DaoMisc::insertPair(const QString &contactId, const QString &key, const QString &value)
{
    Statement::Use use = m_insert.use();
    return use.bind(idPlaceholder, contactId).bind(keyPlaceholder, key).bind(valuePlaceholder, value).execute();
}

int DaoMisc::updatePair(const QString &contactId, const QString &key, const QString &value)
{
    Statement::Use use = m_update.use();
    return use.bind(idPlaceholder, contactId).bind(keyPlaceholder, key).bind(valuePlaceholder, value).execute();
}

int DaoMisc::deletePair(const QString &contactId, const QString &key)
{
    Statement::Use use = m_delete.use();
    return use.bind(idPlaceholder, contactId).bind(keyPlaceholder, key).execute();
}

int DaoMisc::deletePairs(const QString &contactId)
{
    Statement::Use use = m_deleteAll.use();
    return use.bind(idPlaceholder, contactId).execute();
}

QStringList DaoMisc::value(const QString &contactId, const QString &key)
{
    Statement::Use use = m_selectValue.use();
    if (use.bind(idPlaceholder, contactId).bind(keyPlaceholder, key).execute() != 0 || !use.next())
        return {};
    return {use.text(0)};
}

QMap<QString, QString> DaoMisc::pairs(const QString &contactId)
{
    QMap<QString, QString> result;
    Statement::Use use = m_selectPairs.use();
    if (use.bind(idPlaceholder, contactId).execute() != 0)
        return result;
    while (use.next())
        result.insert(use.text(0), use.text(1));
    return result;
}

void DaoMisc::fill(ListContact &contacts)
{
    constexpr qsizetype few = 4;
    constexpr qsizetype atATime = 500;
    if (contacts.size() <= few) {
        for (Contact &contact : contacts)
            contact.misc = pairs(contact.contactId);
        return;
    }
    for (qsizetype start = 0; start < contacts.size(); start += atATime) {
        const qsizetype end = qMin(start + atATime, contacts.size());
        QStringList ids;
        for (qsizetype i = start; i < end; ++i)
            ids.append(contacts.at(i).contactId);
        const auto found = pairsOf(ids);
        for (qsizetype i = start; i < end; ++i)
            contacts[i].misc = found.value(contacts.at(i).contactId);
    }
}

QHash<QString, QMap<QString, QString>> DaoMisc::pairsOf(const QStringList &contactIds)
{
    QHash<QString, QMap<QString, QString>> result;
    Statement statement(m_handle, QLatin1String("SELECT contactId, keyName, value FROM MISC WHERE contactId IN (") +
                                      QueryText::idList(contactIds));
    Statement::Use use = statement.use();
    if (use.execute() == 0) {
        while (use.next())
            result[use.text(0)].insert(use.text(1), use.text(2));
    }
    return result;
}

int DaoMisc::replacePairs(const QString &contactId, const QMap<QString, QString> &newPairs)
{
    if (pairs(contactId) == newPairs)
        return 0;
    int code = deletePairs(contactId);
    for (auto pair = newPairs.cbegin(); pair != newPairs.cend() && code == 0; ++pair)
        code = insertPair(contactId, pair.key(), pair.value());
    return code;
}
