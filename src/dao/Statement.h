// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <optional>
#include <utility>

class Connection;

/// A prepared statement. Used through a Use, one at a time. Belongs to the thread of its connection.
class Statement
{
public:
    /// The text is prepared at its first use and kept: a worker that needs one statement pays for one. A text that
    /// cannot be prepared fails, and is tried again at the next use.
    Statement(Connection &connection, const QString &text);

    /// Why a statement is not executed, where the log tells.
    static const QString refusal;

    /// One execution with its rows. A prepared statement pins the tables it reads until it is finished, so this
    /// finishes it when it goes out of scope.
    class Use
    {
    public:
        explicit Use(Statement &statement)
            : m_connection(statement.m_connection)
            , m_query(*statement.m_query)
            , m_prepareError(statement.m_prepareError)
        {
        }
        ~Use() { m_query.finish(); }
        Use(const Use &) = delete;
        Use &operator=(const Use &) = delete;

        /// A null text is stored as an empty one: NULL matches nothing, not even ''.
        Use &bind(const QString &placeholder, const QString &text);
        Use &bind(const QString &placeholder, int number);
        /// A flag is stored as the text "true" or "false", which is what statements compare it with.
        Use &bind(const QString &placeholder, bool flag);
        Use &bind(const QString &placeholder, const QDateTime &time);
        Use &bindNull(const QString &placeholder);

        /// 0, or -1 after logging why not: it failed, or one before it in the same Transaction has.
        int execute();
        /// Executes, and gives each row to `take` as this object. False, after logging why, when it cannot be executed
        /// and where a row cannot be read: what was taken until then is not all.
        template <typename Take>
        [[nodiscard]] bool eachRow(Take take)
        {
            if (execute() != 0)
                return false;
            while (m_query.next())
                take(std::as_const(*this));
            return isAtEnd();
        }
        QVariant value(int column) const { return m_query.value(column); }
        QString text(int column) const { return m_query.value(column).toString(); }
        int rowsAffected() const { return m_query.numRowsAffected(); }
        qint64 lastInsertId() const { return m_query.lastInsertId().toLongLong(); }

    private:
        bool isAtEnd();
        void fail(const QString &reason);

        Connection &m_connection;
        QSqlQuery &m_query;
        const QSqlError &m_prepareError;
    };

    Use use();

private:
    Connection &m_connection;
    QString m_text;
    std::optional<QSqlQuery> m_query;
    bool m_isPrepared = false;
    QSqlError m_prepareError;
};
