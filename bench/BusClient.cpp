// SPDX-License-Identifier: Apache-2.0
#include "bench/BusClient.h"

#include "bench/BenchError.h"
#include "bench/MadeUpContacts.h"
#include "platform/records/ContactIds.h"
#include "platform/records/KestinBus.h"

#include <QDBusPendingCall>
#include <QDBusReply>
#include <QElapsedTimer>

#include <deque>

BusClient::BusClient(const QDBusConnection &connection)
    : m_connection(connection)
{
}

BusClient::Answer BusClient::call(const QString &module, const QString &method, const QVariantList &arguments) const
{
    constexpr int limitMs = 120000;
    const QDBusMessage message = KestinBus::methodCall(module, method, arguments);
    QElapsedTimer timer;
    timer.start();
    const QDBusMessage reply = m_connection.call(message, QDBus::Block, limitMs);
    const qint64 nanoseconds = timer.nsecsElapsed();
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw BenchError(QStringLiteral("%1 of %2 failed: %3").arg(method, module, reply.errorMessage()));
    return {nanoseconds, reply};
}

BusClient::Answer BusClient::callDirectory(const QString &method, const QVariantList &arguments) const
{
    return call(ModuleName::directory, method, arguments);
}

BusClient::Answer BusClient::callTelephony(const QString &method, const QStringList &numbers) const
{
    return call(ModuleName::telephony, method, {numbers});
}

qint64 BusClient::askForNumbers(int first, int contacts) const
{
    constexpr std::size_t underWay = 64;
    struct Asked
    {
        bool isCanonical;
        QDBusPendingCall call;
    };
    const auto ask = [this](bool isCanonical, const QStringList &numbers) {
        const QString method = isCanonical ? QStringLiteral("makeCanonicalNumberListWithoutPrefix")
                                           : QStringLiteral("extractDialableNumberList");
        return Asked{isCanonical,
                     m_connection.asyncCall(KestinBus::methodCall(ModuleName::telephony, method, {numbers}))};
    };
    std::deque<Asked> asked;
    QElapsedTimer timer;
    timer.start();
    for (int next = first; next < first + contacts || !asked.empty();) {
        for (; asked.size() < underWay && next < first + contacts; ++next)
            asked.push_back(ask(false, MadeUpContacts::rawNumbers(next)));
        Asked front = std::move(asked.front());
        asked.pop_front();
        front.call.waitForFinished();
        const QDBusReply<QStringList> reply = front.call.reply();
        if (!reply.isValid())
            throw BenchError(QStringLiteral("Telephony failed: %1").arg(reply.error().message()));
        if (!front.isCanonical)
            asked.push_back(ask(true, reply.value()));
    }
    return timer.nsecsElapsed();
}

BusClient::Answer BusClient::emptyCall() const
{
    // An id of this form is answered from its text alone.
    return callDirectory(QStringLiteral("getContactTypeById"), {ContactIds::remoteEnd});
}
