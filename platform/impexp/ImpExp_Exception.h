// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

/// What went wrong with a synchronisation file. The message can follow the word "because".
class ImpExp_Exception : public std::exception
{
public:
    explicit ImpExp_Exception(const QString &text);

    QString message() const { return m_message; }
    const char *what() const noexcept override { return m_what.constData(); }

private:
    QString m_message;
    QByteArray m_what;
};

/// A single contact cannot be imported or exported. The others can.
class ImpExp_ErrorException : public ImpExp_Exception
{
public:
    using ImpExp_Exception::ImpExp_Exception;
};

/// The file cannot be read or written any further.
class ImpExp_FatalException : public ImpExp_Exception
{
public:
    explicit ImpExp_FatalException(const QString &reason);
    /// The place is part of the message. Lines count from 1, columns from 0.
    ImpExp_FatalException(const QString &reason, qint64 line, qint64 column);

    /// 0 when the trouble has no place in the file.
    qint64 line() const { return m_line; }
    qint64 column() const { return m_column; }

private:
    qint64 m_line = 0;
    qint64 m_column = 0;
};
