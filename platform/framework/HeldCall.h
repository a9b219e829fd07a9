// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QMetaMethod>
#include <QVariantList>

class QDBusContext;

/// A bus call that is answered later than its method returns, or is even served later.
class HeldCall
{
public:
    /// The call that the context is serving; it is not answered by itself any more. `arguments` as for a meta call.
    HeldCall(const QDBusContext &context, const QMetaMethod &method, void **arguments);

    /// Where a meta call finds its arguments and leaves its result, valid as long as this object.
    QList<void *> places();

    /// Each call is answered once, by one of these two. A caller that wants no reply gets none.
    void answer() const;
    void answerWithError(const QString &errorName, const QString &message);
    bool isAnswered() const { return m_isAnswered; }

private:
    QDBusConnection m_connection;
    QDBusMessage m_message;
    QVariant m_result; ///< invalid when the method returns nothing
    QVariantList m_arguments;
    bool m_isAnswered = false;
};
