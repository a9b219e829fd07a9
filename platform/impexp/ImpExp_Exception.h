// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

/// What went wrong with a synchronisation file; the message goes well behind the word "because".
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
