// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/HeldCall.h"

#include <QDBusContext>

HeldCall::HeldCall(const QDBusContext &context, const QMetaMethod &method, void **arguments)
    : m_connection(context.connection())
    , m_message(context.message())
{
    context.setDelayedReply(true);
    if (method.returnMetaType() != QMetaType::fromType<void>())
        m_result = QVariant(method.returnMetaType(), arguments[0]);
    for (int i = 0; i < method.parameterCount(); ++i)
        m_arguments.append(QVariant(method.parameterMetaType(i), arguments[i + 1]));
}

QList<void *> HeldCall::places()
{
    QList<void *> places{m_result.isValid() ? m_result.data() : nullptr};
    for (QVariant &argument : m_arguments)
        places.append(argument.data());
    return places;
}

void HeldCall::answer() const
{
    if (m_message.isReplyRequired())
        m_connection.send(m_message.createReply(m_result.isValid() ? QVariantList{m_result} : QVariantList()));
}

void HeldCall::answerWithError(const QString &errorName, const QString &message)
{
    m_isAnswered = true;
    if (m_message.isReplyRequired())
        m_connection.send(m_message.createErrorReply(errorName, message));
}
