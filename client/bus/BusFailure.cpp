// SPDX-License-Identifier: Apache-2.0
#include "client/bus/CommandFailure.h"

#include "platform/records/KestinBus.h"

#include <QDBusError>

namespace {

ExitCode codeOf(QDBusError::ErrorType error)
{
    switch (error) {
    case QDBusError::ServiceUnknown:
    case QDBusError::UnknownObject:
    case QDBusError::Disconnected:
    case QDBusError::AccessDenied:
        return ExitCode::NoService;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return ExitCode::NoAnswer;
    default:
        return ExitCode::Refused;
    }
}

QString textOf(const QString &module, const QDBusError &error)
{
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::UnknownObject:
        return QStringLiteral("%1 is not running on this message bus").arg(module);
    case QDBusError::Disconnected:
        return QStringLiteral("the message bus closed the connection");
    case QDBusError::AccessDenied:
        return QStringLiteral("the message bus does not let you call %1: %2").arg(module, error.message());
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return QStringLiteral("%1 gave no answer in time, or ended before it answered").arg(module);
    default:
        // The platform's own error carries a sentence; others need their name to be understood.
        if (error.name().startsWith(KestinBus::prefix))
            return QStringLiteral("%1: %2").arg(module, error.message());
        return QStringLiteral("%1 answered with an error: %2 (%3)").arg(module, error.message(), error.name());
    }
}

} // namespace

BusFailure::BusFailure(const QString &module, const QDBusMessage &reply)
    : CommandFailure(codeOf(QDBusError(reply).type()), textOf(module, QDBusError(reply)))
    , m_tooLarge(QDBusError(reply).type() == QDBusError::LimitsExceeded)
{
}
