// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinModule.h"
#include "platform/framework/WireSize.h"

#include <QMetaMethod>

#include <memory>

/// A bus adaptor whose failures reach the caller as error replies:
/// - a KestinException that a slot of the adaptor throws (as a pointer to a new object) becomes the error
///   "com.norlan.Kestin.KestinException" with the exception's message; it must never unwind through the bus library;
/// - a result larger than the bus carries becomes "org.freedesktop.DBus.Error.LimitsExceeded", where sending it would
///   cost the module its connection.
/// `Adaptor` is a QDBusAbstractAdaptor whose parent is a KestinModule.
template <typename Adaptor>
class ErrorReplying : public Adaptor
{
public:
    explicit ErrorReplying(KestinModule *module)
        : Adaptor(module)
        , m_module(*module)
    {
    }

    // Every bus call arrives here, whatever its method.
    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        if (call != QMetaObject::InvokeMetaMethod)
            return Adaptor::qt_metacall(call, id, arguments);
        const QMetaMethod method = this->metaObject()->method(id);
        try {
            const int rest = Adaptor::qt_metacall(call, id, arguments);
            refuseWhatIsTooLarge(method, arguments[0]);
            return rest;
        } catch (KestinException *thrown) {
            const std::unique_ptr<KestinException> exception(thrown);
            m_module.answerWithError(QStringLiteral("com.norlan.Kestin.KestinException"), exception->message());
            return -1;
        }
    }

private:
    void refuseWhatIsTooLarge(const QMetaMethod &method, const void *result)
    {
        if (!result || WireSize::of(method.returnMetaType(), result) <= WireSize::limit)
            return;
        m_module.answerWithError(
            QStringLiteral("org.freedesktop.DBus.Error.LimitsExceeded"),
            QStringLiteral("%1: the result is larger than the bus carries; ask for fewer at a time")
                .arg(QString::fromLatin1(method.name())));
    }

    KestinModule &m_module;
};
