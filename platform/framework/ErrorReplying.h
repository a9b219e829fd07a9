// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/HeldCall.h"
#include "platform/framework/KestinException.h"
#include "platform/framework/KestinModule.h"
#include "platform/framework/WireSize.h"
#include "platform/records/KestinBus.h"

#include <QMetaMethod>

#include <memory>

/// A bus adaptor whose failures reach the caller as error replies:
/// - a KestinException that a slot of the adaptor throws (as a pointer to a new object) becomes the error
///   "com.norlan.Kestin.KestinException" with the exception's message; it must never unwind through the bus library;
/// - a result larger than the bus carries becomes "org.freedesktop.DBus.Error.LimitsExceeded", where sending it would
///   cost the module its connection. So do arguments of that size, which no event could tell any more, and a contact
///   with a text over WireSize::longestText.
/// A call that has to wait for the end of long work (KestinModule::mustWait) is served then, and one that begins long
/// work is answered when that is over. What waits is bounded by the same size, for it is kept in memory; a call beyond
/// that is refused with the same error.
/// `Adaptor` is a QDBusAbstractAdaptor that is made with its parent, a KestinModule, by reference.
template <typename Adaptor>
class ErrorReplying : public Adaptor
{
public:
    template <typename Module>
    explicit ErrorReplying(Module &module)
        : Adaptor(module)
        , m_module(module)
    {
    }

    // Every bus call arrives here, whatever its method.
    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        if (call != QMetaObject::InvokeMetaMethod)
            return Adaptor::qt_metacall(call, id, arguments);
        m_module.longWork().goOnIfDue();
        const QMetaMethod method = this->metaObject()->method(id);
        const qsizetype size = sizeOf(method, arguments);
        if (isRefused(method, arguments, size))
            return -1;
        if (m_module.mustWait(method.name())) {
            hold(method, id, arguments, size);
            return -1;
        }
        const bool wasGoingOn = m_module.longWork().isGoingOn();
        const int rest = serve(method, id, arguments);
        if (!wasGoingOn && m_module.longWork().isGoingOn())
            answerAfterwards(std::make_shared<HeldCall>(m_module, method, arguments));
        return rest;
    }

private:
    int serve(const QMetaMethod &method, int id, void **arguments)
    {
        try {
            const int rest = Adaptor::qt_metacall(QMetaObject::InvokeMetaMethod, id, arguments);
            refuseWhatIsTooLarge(method, arguments[0]);
            return rest;
        } catch (KestinException *thrown) {
            const std::unique_ptr<KestinException> exception(thrown);
            m_module.answerWithError(KestinBus::exceptionError, exception->message());
            return -1;
        }
    }

    void hold(const QMetaMethod &method, int id, void **arguments, qsizetype size)
    {
        size += 1024; // about what a call takes beside its arguments
        if (m_heldSize > 0 && m_heldSize + size > WireSize::limit)
            return refuse(method, QStringLiteral("too many calls wait already; call again later"));
        m_heldSize += size;
        const auto held = std::make_shared<HeldCall>(m_module, method, arguments);
        m_module.longWork().after(this, [this, method, id, held, size] {
            m_heldSize -= size;
            m_module.setHeldCall(held.get());
            serve(method, id, held->places().data());
            m_module.setHeldCall(nullptr);
            if (!held->isAnswered())
                answerAfterwards(held);
        });
    }

    /// At once, unless the call has begun long work.
    void answerAfterwards(const std::shared_ptr<HeldCall> &held)
    {
        m_module.longWork().rightAfter(this, [held] { held->answer(); });
    }

    static qsizetype sizeOf(const QMetaMethod &method, void **arguments)
    {
        qsizetype size = 0;
        for (int i = 0; i < method.parameterCount(); ++i)
            size += WireSize::of(method.parameterMetaType(i), arguments[i + 1]);
        return size;
    }

    bool isRefused(const QMetaMethod &method, void **arguments, qsizetype size)
    {
        bool isTooLong = false;
        for (int i = 0; i < method.parameterCount(); ++i)
            isTooLong = isTooLong || WireSize::hasTooLongText(method.parameterMetaType(i), arguments[i + 1]);
        if (size > WireSize::limit)
            refuse(method, QStringLiteral("the arguments are larger than 24 MiB; send fewer at a time"));
        else if (isTooLong)
            refuse(method, QStringLiteral("a text of a contact is longer than 64 KiB"));
        return size > WireSize::limit || isTooLong;
    }

    void refuseWhatIsTooLarge(const QMetaMethod &method, const void *result)
    {
        if (result && WireSize::of(method.returnMetaType(), result) > WireSize::limit)
            refuse(method, QStringLiteral("the result is larger than the bus carries; ask for fewer at a time"));
    }

    void refuse(const QMetaMethod &method, const QString &reason)
    {
        m_module.answerWithError(QStringLiteral("org.freedesktop.DBus.Error.LimitsExceeded"),
                                 QString::fromLatin1(method.name()) + QLatin1String(": ") + reason);
    }

    KestinModule &m_module;
    qsizetype m_heldSize = 0; ///< of the calls that wait
};
