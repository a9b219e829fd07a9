// SPDX-License-Identifier: Apache-2.0
#include "src/dao/DaoMisc.h"

namespace {
const QString idPlaceholder = QStringLiteral(":contactId");
const QString keyPlaceholder = QStringLiteral(":keyName");
const QString valuePlaceholder = QStringLiteral(":value");
} // namespace

DaoMisc::DaoMisc(const QSqlDatabase &handle)
    : m_insert(handle,
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

int DaoMisc::replacePairs(const QString &contactId, const QMap<QString, QString> &newPairs)
{
    if (pairs(contactId) == newPairs)
        return 0;
    int code = deletePairs(contactId);
    for (auto pair = newPairs.cbegin(); pair != newPairs.cend() && code == 0; ++pair)
        code = insertPair(contactId, pair.key(), pair.value());
    return code;
}
