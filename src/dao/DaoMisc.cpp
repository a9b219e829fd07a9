// SPDX-License-Identifier: Apache-2.0
#include "src/dao/DaoMisc.h"

DaoMisc::DaoMisc(Connection &connection)
    : m_insert(connection,
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

bool DaoMisc::insertPair(const QString &contactId, const QString &key, const QString &value)
{
    return m_insert.use(contactId, key, value).execute();
}

bool DaoMisc::updatePair(const QString &contactId, const QString &key, const QString &value)
{
    return m_update.use(value, contactId, key).execute();
}

bool DaoMisc::deletePair(const QString &contactId, const QString &key)
{
    return m_delete.use(contactId, key).execute();
}

bool DaoMisc::deletePairs(const QString &contactId)
{
    return m_deleteAll.use(contactId).execute();
}

std::optional<QStringList> DaoMisc::value(const QString &contactId, const QString &key)
{
    QStringList values;
    Statement::Use use = m_selectValue.use(contactId, key);
    if (!use.eachRow([&values](const Statement::Use &row) { values.append(row.text(0)); }))
        return std::nullopt;
    return values.mid(0, 1);
}

std::optional<QMap<QString, QString>> DaoMisc::pairs(const QString &contactId)
{
    QMap<QString, QString> result;
    Statement::Use use = m_selectPairs.use(contactId);
    if (!use.eachRow([&result](const Statement::Use &row) { result.insert(row.text(0), row.text(1)); }))
        return std::nullopt;
    return result;
}

bool DaoMisc::fill(Contact &contact)
{
    const auto found = pairs(contact.contactId);
    contact.misc = found.value_or(QMap<QString, QString>());
    return found.has_value();
}

bool DaoMisc::replacePairs(const QString &contactId, const QMap<QString, QString> &newPairs)
{
    const auto stored = pairs(contactId);
    if (!stored)
        return false;
    if (stored == newPairs)
        return true;
    bool isDone = stored->isEmpty() || deletePairs(contactId);
    for (auto pair = newPairs.cbegin(); pair != newPairs.cend() && isDone; ++pair)
        isDone = insertPair(contactId, pair.key(), pair.value());
    return isDone;
}
