// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

/// An error that a platform call reports. C++ code throws it by value. A slot of a bus adaptor throws a pointer to a
/// new object, which ErrorReplying turns into an error reply.
class KestinException : public std::exception
{
public:
    enum ErrorType {
        RemoteCallFailed = 1, ///< a call to another module could not be made
        InvocationFailed = 4, ///< a bus method has no slot that takes its arguments
    };

    KestinException(const QString &moduleName, int errorType, const QString &text)
        : m_module(moduleName)
        , m_type(errorType)
        , m_message(text)
        , m_what(text.toUtf8())
    {
    }

    QString module() const { return m_module; }
    int type() const { return m_type; }
    QString message() const { return m_message; }
    const char *what() const noexcept override { return m_what.constData(); }

private:
    QString m_module;
    int m_type;
    QString m_message;
    QByteArray m_what;
};
