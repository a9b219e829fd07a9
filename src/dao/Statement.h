// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QVarLengthArray>

#include <cstddef>
#include <memory>
#include <utility>

class Connection;
class QDateTime;
struct sqlite3_stmt;

/// A prepared statement, run on SQLite's own interface: Qt's describes all columns anew at each execution, which costs
/// more than a look-up. Used through a Use, one at a time. Belongs to the thread of its connection and must be gone
/// before that is closed.
class Statement
{
public:
    /// The text is prepared at its first use and kept: a worker that needs a single statement pays for no other. A text
    /// that cannot be prepared fails, and is tried again at the next use.
    Statement(Connection &connection, const QString &text);

    /// Why a statement is not executed, where the log tells.
    static const QString refusal;

    /// A text as the database holds it, as Qt has it.
    static QString decoded(QByteArrayView utf8);

    /// One execution with its rows. Parameters are bound in the order in which their names first appear in the text;
    /// a parameter that is not bound is NULL. A prepared statement pins the tables it reads until it is reset, which
    /// happens when this goes out of scope; it keeps no bound value either.
    class Use
    {
    public:
        template <typename... Values>
        explicit Use(Statement &statement, const Values &...values)
            : m_statement(statement)
        {
            bind(values...);
        }
        ~Use();
        Use(const Use &) = delete;
        Use &operator=(const Use &) = delete;

        /// Binds the next parameters.
        template <typename... Values>
        Use &bind(const Values &...values)
        {
            (bindNext(values), ...);
            return *this;
        }

        /// Makes this parameter NULL again.
        Use &bindNull(const char *parameter);

        /// False, after logging why, when the statement fails or another before it in the same Transaction has failed.
        [[nodiscard]] bool execute();
        /// Executes, and gives each row to `take` as this object. False, after logging why, when it cannot be executed
        /// and where a row cannot be read: what was taken until then is not all.
        template <typename Take>
        [[nodiscard]] bool eachRow(Take take)
        {
            while (next())
                take(std::as_const(*this));
            return isAtEnd();
        }
        /// The same row by row: goes to the next row, executing before the first. False behind the last row, and where
        /// eachRow would be.
        bool next() { return (m_isBegun || begin()) && nextRow(); }
        /// Whether there are no more rows.
        bool isAtEnd() const { return m_isAtEnd; }

        // Columns of the row, counted from 0. What is NULL is an empty text, 0, false and an invalid time.
        QString text(int column) const;
        qint64 number(int column) const;
        bool flag(int column) const;
        QDateTime time(int column) const;

        // After execute().
        int rowsAffected() const;
        qint64 lastInsertId() const;

    private:
        /// A null text is stored as an empty text: NULL matches nothing, not even ''.
        void bindNext(const QString &text);
        void bindNext(int number);
        /// A flag is stored as the text "true" or "false", which is what statements compare it with.
        void bindNext(bool flag);
        /// In UTC, for dates are compared as texts. An invalid time is NULL.
        void bindNext(const QDateTime &time);
        void bindNext(std::nullptr_t null);
        void bindNext(const char *text) = delete; // would be a flag
        /// The text must stay where it is as long as this object.
        void bindUtf8(const char *text, qsizetype size);
        /// Of the column; without an address when it is NULL.
        QByteArrayView utf8(int column) const;
        sqlite3_stmt *prepared() const { return m_statement.m_prepared.get(); }

        bool begin();
        bool nextRow();
        void fail(const QString &reason);

        Statement &m_statement;
        QVarLengthArray<QByteArray, 5> m_texts; ///< that are bound
        int m_bound = 0;
        int m_bindCode = 0; ///< SQLite's, of the first value that could not be bound
        bool m_isBegun = false;
        bool m_isAtEnd = false;
    };

    /// With the first parameters bound.
    template <typename... Values>
    Use use(const Values &...values)
    {
        prepare();
        return Use(*this, values...);
    }

private:
    struct Finalizer
    {
        void operator()(sqlite3_stmt *statement) const;
    };

    void prepare();

    Connection &m_connection;
    QString m_text;
    std::unique_ptr<sqlite3_stmt, Finalizer> m_prepared;
    QString m_prepareError; ///< why it is not prepared
};
