// SPDX-License-Identifier: Apache-2.0
#include "src/dao/Statement.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/Connection.h"

#include <QDateTime>

#include <sqlite3.h>

#include <algorithm>
#include <numeric>

namespace {

/// Most texts are; of these each byte is a character.
bool isAscii(QByteArrayView text)
{
    unsigned bits = 0;
    for (const char byte : text)
        bits |= unsigned(byte);
    return (bits & 0x80) == 0;
}

/// Of a time in the form in which times are bound; an invalid time when it has another form, or is none.
QDateTime boundTime(QByteArrayView text)
{
    constexpr QByteArrayView form("0000-00-00T00:00:00.000Z");
    const auto fits = [](char found, char wanted) {
        return wanted == '0' ? found >= '0' && found <= '9' : found == wanted;
    };
    if (!std::equal(text.begin(), text.end(), form.begin(), form.end(), fits))
        return {};
    const auto number = [text](qsizetype first, qsizetype count) {
        return std::accumulate(text.begin() + first, text.begin() + first + count, 0,
                               [](int value, char digit) { return 10 * value + (digit - '0'); });
    };
    const QTime time(number(11, 2), number(14, 2), number(17, 2), number(20, 3));
    return time.isValid() ? QDateTime(QDate(number(0, 4), number(5, 2), number(8, 2)), time, Qt::UTC) : QDateTime();
}

} // namespace

const QString Statement::refusal = QStringLiteral("not executed, because one before it in the transaction has failed");

void Statement::Finalizer::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement); // answers with the error of its last execution, which was told then
}

Statement::Statement(Connection &connection, const QString &text)
    : m_connection(connection)
    , m_text(text)
{
}

QString Statement::decoded(QByteArrayView utf8)
{
    if (isAscii(utf8))
        return QString::fromLatin1(utf8);
    const QString text = QString::fromUtf8(utf8);
    // The decoder takes U+FEFF at the beginning for a mark of the encoding.
    return utf8.startsWith(QByteArrayView("\xEF\xBB\xBF")) ? QChar(QChar::ByteOrderMark) + text : text;
}

void Statement::prepare()
{
    if (m_prepared)
        return;
    sqlite3 *database = m_connection.database();
    const QByteArray text = m_text.toUtf8();
    sqlite3_stmt *prepared = nullptr;
    if (database)
        sqlite3_prepare_v3(database, text.constData(), int(text.size()), SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    m_prepared.reset(prepared);
    if (!prepared)
        m_prepareError = m_connection.errorText();
}

Statement::Use::~Use()
{
    if (!prepared())
        return;
    sqlite3_reset(prepared()); // answers like finalize
    sqlite3_clear_bindings(prepared());
}

void Statement::Use::bindNext(const QString &text)
{
    if (text.isEmpty())
        return bindUtf8("", 0);
    m_texts.append(text.toUtf8());
    bindUtf8(m_texts.last().constData(), m_texts.last().size());
}

void Statement::Use::bindNext(int number)
{
    const int code = sqlite3_bind_int(prepared(), ++m_bound, number);
    m_bindCode = m_bindCode ? m_bindCode : code;
}

void Statement::Use::bindNext(bool flag)
{
    if (flag)
        bindUtf8("true", 4);
    else
        bindUtf8("false", 5);
}

void Statement::Use::bindNext(const QDateTime &time)
{
    if (time.isValid())
        bindNext(time.toUTC().toString(Qt::ISODateWithMs));
    else
        bindNext(nullptr);
}

void Statement::Use::bindNext(std::nullptr_t)
{
    ++m_bound;
}

void Statement::Use::bindUtf8(const char *text, qsizetype size)
{
    const int code = sqlite3_bind_text64(prepared(), ++m_bound, text, sqlite3_uint64(size), SQLITE_STATIC, SQLITE_UTF8);
    m_bindCode = m_bindCode ? m_bindCode : code;
}

Statement::Use &Statement::Use::bindNull(const char *parameter)
{
    sqlite3_bind_null(prepared(), sqlite3_bind_parameter_index(prepared(), parameter));
    return *this;
}

QByteArrayView Statement::Use::utf8(int column) const
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(prepared(), column));
    if (!text || !*text)
        return {text, 0}; // so are most columns of a contact; the size is asked for in vain
    return {text, sqlite3_column_bytes(prepared(), column)};
}

QString Statement::Use::text(int column) const
{
    return decoded(utf8(column));
}

qint64 Statement::Use::number(int column) const
{
    return sqlite3_column_int64(prepared(), column);
}

bool Statement::Use::flag(int column) const
{
    const QByteArrayView stored = utf8(column);
    return !stored.isEmpty() && stored != "0" && stored.compare("false", Qt::CaseInsensitive) != 0;
}

QDateTime Statement::Use::time(int column) const
{
    const QByteArrayView stored = utf8(column);
    const QDateTime time = boundTime(stored);
    return time.isValid() ? time : QDateTime::fromString(decoded(stored), Qt::ISODateWithMs);
}

bool Statement::Use::execute()
{
    return eachRow([](const Use &) {});
}

int Statement::Use::rowsAffected() const
{
    return sqlite3_changes(m_statement.m_connection.database());
}

qint64 Statement::Use::lastInsertId() const
{
    return sqlite3_last_insert_rowid(m_statement.m_connection.database());
}

/// Whether it can be executed.
bool Statement::Use::begin()
{
    if (!m_statement.m_connection.isUsable())
        fail(refusal);
    else if (!prepared())
        fail(m_statement.m_prepareError);
    else if (m_bindCode != SQLITE_OK)
        fail(QString::fromUtf8(sqlite3_errstr(m_bindCode)));
    else
        m_isBegun = true;
    return m_isBegun;
}

/// False at the end of the rows, and where one cannot be read (logged).
bool Statement::Use::nextRow()
{
    const int code = sqlite3_step(prepared());
    m_isAtEnd = code == SQLITE_DONE;
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        fail(m_statement.m_connection.errorText());
    if ((code & 0xff) == SQLITE_CORRUPT)
        m_statement.m_connection.noteDamage();
    return code == SQLITE_ROW;
}

void Statement::Use::fail(const QString &reason)
{
    KestinLogger::error("Error while executing query %1 : %2", m_statement.m_text, reason);
    m_statement.m_connection.noteFailure();
}
