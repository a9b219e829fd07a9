// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinTransport.h"
#include "platform/records/RecordMaps.h"

#include <QDBusError>
#include <QHash>

#include <functional>

/// A transport whose peers are a function: it is given every call and answers it. Calls and events are recorded.
class ScriptedTransport : public KestinTransport
{
public:
    struct Call
    {
        QString module;
        QString method;
        QVariantList arguments;
        bool wantsAnswer = true;

        /// "Module.method" and its arguments, a list's elements joined with ",".
        QString text() const
        {
            QString line = module + '.' + method;
            for (const QVariant &argument : arguments)
                line += ' ' + argument.toStringList().join(',');
            return line;
        }
    };
    /// Answers a call with values, or with an error made by `noPeer`, or by throwing.
    using Answer = std::function<QDBusMessage(const Call &call, const QDBusMessage &message)>;

    Answer answer = [](const Call &, const QDBusMessage &message) { return noPeer(message); };
    /// Takes calls that are not waited for to somebody else; nothing: `answer` does.
    std::function<std::optional<QDBusPendingCall>(const Call &call)> forward;
    QList<Call> calls;
    QList<KestinEvent> events;
    QStringList subscriptions;
    QHash<QString, ModuleWatch *> watches; ///< by module, the latest
    int refusedEvents = 0;                 ///< so many of the next are not delivered
    bool subscriptionsWork = true;

    static QDBusMessage noPeer(const QDBusMessage &message)
    {
        return message.createErrorReply(QDBusError::ServiceUnknown, "nobody there");
    }

    static Answer with(const QVariant &value)
    {
        return [value](const Call &, const QDBusMessage &message) { return message.createReply(value); };
    }
    static QDBusMessage failing(const Call &, const QDBusMessage &) { throw 1; }

    QDBusMessage syncRemoteCall(const QString &module, const QString &method, const QVariantList &arguments,
                                std::chrono::milliseconds = callLimit) override
    {
        return record({module, method, arguments});
    }
    QDBusPendingCall asyncRemoteCall(const QString &module, const QString &method,
                                     const QVariantList &arguments) override
    {
        if (const auto call = forward ? forward({module, method, arguments}) : std::nullopt)
            return *call;
        return QDBusPendingCall::fromCompletedCall(syncRemoteCall(module, method, arguments));
    }
    void send(const QString &module, const QString &method, const QVariantList &arguments) override
    {
        (void)record({module, method, arguments, false});
    }
    bool sendEvent(const QString &, const KestinEvent &event) override
    {
        events.append(event);
        return refusedEvents-- <= 0;
    }
    bool subscribe(const QString &eventName, QObject *, const QByteArray &) override
    {
        subscriptions.append(eventName);
        return subscriptionsWork;
    }
    std::unique_ptr<ModuleWatch> watch(const QString &module) override
    {
        auto watch = std::make_unique<ModuleWatch>();
        watches.insert(module, watch.get());
        return watch;
    }

    /// The answers of a telephony service that takes the blanks out of numbers and prefixes canonical ones with "+".
    static QDBusMessage answerAsTelephony(const Call &call, const QDBusMessage &message)
    {
        const auto canonical = [](QStringList numbers) {
            for (QString &number : numbers)
                number = number.isEmpty() ? number : '+' + number;
            return numbers;
        };
        const QVariant argument = call.arguments.value(0);
        if (call.method == "makeCanonicalNumberMapWithoutPrefix") {
            auto numbersById = argument.value<QMapQStringQStringList>();
            for (QStringList &numbers : numbersById)
                numbers = canonical(numbers);
            return message.createReply(QVariant::fromValue(numbersById));
        }
        if (call.method == "makeCanonicalNumberListWithoutPrefix")
            return message.createReply(QVariant(canonical(argument.toStringList())));
        return message.createReply(QVariant(argument.toStringList().replaceInStrings(" ", QString())));
    }

    QStringList eventNames() const
    {
        QStringList names;
        for (const KestinEvent &event : events)
            names.append(event.getEvtName());
        return names;
    }

private:
    QDBusMessage record(const Call &call)
    {
        calls.append(call);
        return answer(call, QDBusMessage::createMethodCall("a.b", "/a", "a.b", call.method));
    }
};
