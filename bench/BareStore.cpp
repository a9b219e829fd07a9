// SPDX-License-Identifier: Apache-2.0
#include "bench/BareStore.h"

#include "bench/BenchError.h"

#include <QElapsedTimer>
#include <QFile>

namespace {

/// Every column but the persistent id, which a new contact does not have.
QByteArray insertText()
{
    QByteArray columns;
    QByteArray placeholders;
    for (const Contact::TextField &field : Contact::texts) {
        columns += QByteArray(field.name) + ',';
        placeholders += "?,";
    }
    return "INSERT INTO CONTACT (" + columns +
           "isPreviewed,isPrivate,type,photo,melody,lastModificationDate) VALUES (" + placeholders + "?,?,?,?,?,?)";
}

QList<QByteArray> valuesOf(const Contact &contact)
{
    QList<QByteArray> values;
    for (const Contact::TextField &field : Contact::texts)
        values.append((contact.*field.value).toUtf8());
    const QByteArray now = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs).toUtf8();
    return values << "false"
                  << "false" << QByteArray::number(contact.type) << ""
                  << "" << now;
}

} // namespace

BareStore::BareStore(const QString &path)
{
    sqlite3 *database = nullptr;
    const int code = sqlite3_open_v2(QFile::encodeName(path).constData(), &database, SQLITE_OPEN_READWRITE, nullptr);
    m_database.reset(database);
    if (code != SQLITE_OK)
        throw BenchError(QStringLiteral("%1 cannot be opened").arg(path));
    for (const char *pragma : {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=FULL"})
        sqlite3_exec(database, pragma, nullptr, nullptr, nullptr);
    m_begin = prepare("BEGIN");
    m_insertContact = prepare(insertText());
    m_insertPair = prepare("INSERT INTO MISC(contactId, keyName, value) VALUES (?,?,?)");
    m_commit = prepare("COMMIT");
}

BareStore::Statement BareStore::prepare(const QByteArray &text)
{
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(m_database.get(), text.constData(), -1, &statement, nullptr) != SQLITE_OK)
        throw BenchError(QString::fromUtf8(sqlite3_errmsg(m_database.get())));
    return Statement(statement);
}

void BareStore::run(const Statement &statement, const QList<QByteArray> &values)
{
    int position = 0;
    for (const QByteArray &value : values)
        sqlite3_bind_text(statement.get(), ++position, value.constData(), int(value.size()), SQLITE_STATIC);
    const bool isDone = sqlite3_step(statement.get()) == SQLITE_DONE;
    sqlite3_reset(statement.get());
    if (!isDone)
        throw BenchError(QString::fromUtf8(sqlite3_errmsg(m_database.get())));
}

BareStore::Row BareStore::rowOf(const Contact &contact)
{
    if (contact.misc.isEmpty())
        return {valuesOf(contact), {}, {}};
    return {valuesOf(contact), contact.misc.firstKey().toUtf8(), contact.misc.first().toUtf8()};
}

void BareStore::add(const Row &row)
{
    run(m_insertContact, row.values);
    if (row.key.isEmpty())
        return;
    const QByteArray id = "#CONTACT_" + QByteArray::number(sqlite3_last_insert_rowid(m_database.get())) + '#';
    run(m_insertPair, {id, row.key, row.pair});
}

void BareStore::add(const Contact &contact)
{
    add(rowOf(contact));
}

qint64 BareStore::insert(const Contact &contact)
{
    const Row row = rowOf(contact);
    QElapsedTimer timer;
    timer.start();
    begin();
    add(row);
    commit();
    return timer.nsecsElapsed();
}
