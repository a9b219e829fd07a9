// SPDX-License-Identifier: Apache-2.0
#include "src/dao/DaoMisc.h"

#include "src/dao/QueryText.h"

#include <algorithm>

namespace {
const QString idPlaceholder = QStringLiteral(":contactId");
const QString keyPlaceholder = QStringLiteral(":keyName");
const QString valuePlaceholder = QStringLiteral(":value");
} // namespace

DaoMisc::DaoMisc(Connection &connection)
    : m_connection(connection)
    , m_insert(connection,
               QStringLiteral("INSERT INTO MISC(contactId, keyName, value) VALUES (:contactId,:keyName,:value)"))
    , m_update(connection,
               QStringLiteral("UPDATE MISC SET value=:value WHERE contactId=:contactId AND keyName=:keyName"))
    , m_delete(connection, QStringLiteral("DELETE FROM MISC WHERE contactId=:contactId AND keyName=:keyName"))
    , m_deleteAll(connection, QStringLiteral("DELETE FROM MISC WHERE contactId=:contactId"))
    , m_selectValue(connection,
                    QStringLiteral("SELECT value FROM MISC WHERE contactId=:contactId AND keyName=:keyName"))
    , m_selectPairs(connection, QStringLiteral("SELECT keyName, value FROM MISC WHERE contactId=:contactId"))
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

std::optional<QStringList> DaoMisc::value(const QString &contactId, const QString &key)
{
    QStringList values;
    Statement::Use use = m_selectValue.use();
    use.bind(idPlaceholder, contactId).bind(keyPlaceholder, key);
    if (!use.eachRow([&values](const Statement::Use &row) { values.append(row.text(0)); }))
        return std::nullopt;
    return values.mid(0, 1);
}

std::optional<QMap<QString, QString>> DaoMisc::pairs(const QString &contactId)
{
    QMap<QString, QString> result;
    Statement::Use use = m_selectPairs.use();
    use.bind(idPlaceholder, contactId);
    if (!use.eachRow([&result](const Statement::Use &row) { result.insert(row.text(0), row.text(1)); }))
        return std::nullopt;
    return result;
}

bool DaoMisc::fill(ListContact &contacts)
{
    constexpr qsizetype few = 4;
    constexpr qsizetype atATime = 500;
    if (contacts.size() <= few)
        return std::all_of(contacts.begin(), contacts.end(), [this](Contact &contact) { return fill(contact); });
    for (qsizetype start = 0; start < contacts.size(); start += atATime) {
        const qsizetype end = qMin(start + atATime, contacts.size());
        QStringList ids;
        for (qsizetype i = start; i < end; ++i)
            ids.append(contacts.at(i).contactId);
        const auto found = pairsOf(ids);
        if (!found)
            return false;
        for (qsizetype i = start; i < end; ++i)
            contacts[i].misc = found->value(contacts.at(i).contactId);
    }
    return true;
}

bool DaoMisc::fill(Contact &contact)
{
    const auto found = pairs(contact.contactId);
    contact.misc = found.value_or(QMap<QString, QString>());
    return found.has_value();
}

std::optional<QHash<QString, QMap<QString, QString>>> DaoMisc::pairsOf(const QStringList &contactIds)
{
    QHash<QString, QMap<QString, QString>> result;
    Statement statement(m_connection, QLatin1String("SELECT contactId, keyName, value FROM MISC WHERE contactId IN (") +
                                          QueryText::idList(contactIds));
    Statement::Use use = statement.use();
    const auto take = [&result](const Statement::Use &row) { result[row.text(0)].insert(row.text(1), row.text(2)); };
    if (!use.eachRow(take))
        return std::nullopt;
    return result;
}

int DaoMisc::replacePairs(const QString &contactId, const QMap<QString, QString> &newPairs)
{
    const auto stored = pairs(contactId);
    if (!stored)
        return -1;
    if (stored == newPairs)
        return 0;
    int code = deletePairs(contactId);
    for (auto pair = newPairs.cbegin(); pair != newPairs.cend() && code == 0; ++pair)
        code = insertPair(contactId, pair.key(), pair.value());
    return code;
}
