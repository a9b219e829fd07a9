// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantList>

/// A caller of modules that makes one call at a time. An error for an answer is a BenchError.
class BusClient
{
public:
    explicit BusClient(const QDBusConnection &connection);

    struct Answer
    {
        qint64 nanoseconds; ///< from the call to the reply, before its values are decoded
        QDBusMessage message;

        template <typename T>
        T value() const
        {
            return qdbus_cast<T>(message.arguments().value(0));
        }
    };
    Answer call(const QString &module, const QString &method, const QVariantList &arguments) const;
    Answer callDirectory(const QString &method, const QVariantList &arguments) const;
    Answer callTelephony(const QString &method, const QStringList &numbers) const;
    /// Both calls for each of these made-up contacts, with 64 under way. The nanoseconds for all.
    qint64 askForNumbers(int first, int contacts) const;
    /// The call that gives the service nothing to do but to answer.
    Answer emptyCall() const;

private:
    QDBusConnection m_connection;
};
