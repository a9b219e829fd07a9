// SPDX-License-Identifier: Apache-2.0
#include "src/dao/Statement.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/Connection.h"

#include <QDateTime>

const QString Statement::refusal = QStringLiteral("not executed, because one before it in the transaction has failed");

Statement::Statement(Connection &connection, const QString &text)
    : m_connection(connection)
    , m_text(text)
{
}

Statement::Use Statement::use()
{
    if (!m_query) {
        m_query.emplace(m_connection.handle());
        m_query->setForwardOnly(true); // rows are read once; keeping them would cost memory
    }
    if (!m_isPrepared) {
        m_isPrepared = m_query->prepare(m_text);
        m_prepareError = m_isPrepared ? QSqlError() : m_query->lastError();
    }
    return Use(*this);
}

Statement::Use &Statement::Use::bind(const QString &placeholder, const QString &text)
{
    m_query.bindValue(placeholder, text.isNull() ? QLatin1String("") : text);
    return *this;
}

Statement::Use &Statement::Use::bind(const QString &placeholder, int number)
{
    m_query.bindValue(placeholder, number);
    return *this;
}

Statement::Use &Statement::Use::bind(const QString &placeholder, bool flag)
{
    m_query.bindValue(placeholder, flag ? QStringLiteral("true") : QStringLiteral("false"));
    return *this;
}

Statement::Use &Statement::Use::bind(const QString &placeholder, const QDateTime &time)
{
    // One time zone for all: dates are compared as texts.
    m_query.bindValue(placeholder, time.toUTC());
    return *this;
}

Statement::Use &Statement::Use::bindNull(const QString &placeholder)
{
    m_query.bindValue(placeholder, QVariant(QMetaType::fromType<QString>()));
    return *this;
}

int Statement::Use::execute()
{
    const bool isPrepared = !m_prepareError.isValid();
    if (!m_connection.isUsable())
        fail(refusal);
    else if (!isPrepared)
        fail(m_prepareError.text());
    else if (m_query.exec())
        return 0;
    else
        fail(m_query.lastError().text());
    return -1;
}

/// Whether the walk ended because there are no more rows.
bool Statement::Use::isAtEnd()
{
    const QSqlError error = m_query.lastError();
    if (error.isValid())
        fail(error.text());
    return !error.isValid();
}

void Statement::Use::fail(const QString &reason)
{
    KestinLogger::error("Error while executing query %1 : %2", m_query.lastQuery(), reason);
    m_connection.noteFailure();
}
